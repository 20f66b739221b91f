#include "windows/statement_view.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <memory>

#include "windows/texts.h"

namespace tamarok::workbench {

void showStatement(QWidget* parent, const QString& title, const QString& statement)
{
    QDialog dialog{parent};
    dialog.setWindowTitle(title);
    dialog.resize(720, 420);
    QPlainTextEdit text{statement};
    text.setReadOnly(true);
    text.setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text.setAccessibleName(textOf(Text::Statement));
    QDialogButtonBox buttons{QDialogButtonBox::Close};
    buttons.button(QDialogButtonBox::Close)->setText(textOf(Text::Close));
    QPushButton* const copy = buttons.addButton(textOf(Text::Copy), QDialogButtonBox::ActionRole);
    QVBoxLayout layout{&dialog};
    layout.addWidget(&text);
    layout.addWidget(&buttons);
    QObject::connect(copy, &QPushButton::clicked, &dialog, [&] {
        QApplication::clipboard()->setText(statement);
        copy->setText(textOf(Text::Copied));
    });
    QObject::connect(&buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    copy->setFocus();
    dialog.exec();
}

} // namespace tamarok::workbench
