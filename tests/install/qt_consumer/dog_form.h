#pragma once

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTreeView>
#include <QVBoxLayout>
#include <QWidget>
#include <memory>
#include <tamarok/tmkvar.h>
#include <tamarok_qt/entry_controls.h>
#include <tamarok_qt/form.h>
#include <tamarok_qt/list_view.h>

/// A form of an application: the hunting dogs as a list that a click on a head sorts, a project code with its lookup on
/// F4 and its check on leaving, and a field that takes numbers alone. Its widgets are plain ones of Qt.
class DogForm final : public QWidget {
public:
    explicit DogForm(const tamarok::TmkVar& session);

    /// Reads the list anew.
    void fill();
    /// Shows the lookup of the code field.
    void lookUp();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void checkCode();

    const tamarok::TmkVar& session_;
    QVBoxLayout layout_{this};
    QFormLayout fields_;
    QTreeView list_;
    QLineEdit code_;
    QLabel codeName_;
    QLineEdit amount_;

    // The widgets as the library knows them.
    std::shared_ptr<tamarok::qt::Form> form_ = std::make_shared<tamarok::qt::Form>(*this);
    std::shared_ptr<tamarok::qt::ListView> dogs_ = form_->add<tamarok::qt::ListView>(list_);
    std::shared_ptr<tamarok::qt::TextBox> codeBox_ = form_->add<tamarok::qt::TextBox>(code_);
    std::shared_ptr<tamarok::qt::Label> codeLabel_ = form_->add<tamarok::qt::Label>(codeName_);
    std::shared_ptr<tamarok::qt::TextBox> amountBox_ = form_->add<tamarok::qt::TextBox>(amount_);
};
