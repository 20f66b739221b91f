#include "windows/login_dialog.h"

#include <QComboBox>
#include <QCompleter>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QVBoxLayout>
#include <array>

#include "tamarok_qt/texts.h"
#include "windows/patience.h"
#include "windows/theme.h"

#include "tamarok/error.h"

namespace tamarok::workbench {

namespace {

constexpr const char* userKey = "user";
constexpr const char* languageKey = "language";

class LogInDialog final : public QDialog {
public:
    LogInDialog(Workplace& place, QWidget* parent) : QDialog{parent}, place_{place}, accounts_{place.accounts()}
    {
        setWindowIcon(programIcon());
        layOut();
        for (const Account& account : accounts_)
            user_.addItem(qt::toQt(account.name), account.id);
        const int last = user_.findData(QSettings{}.value(userKey, 1).toInt());
        user_.setCurrentIndex(last < 0 ? 0 : last);
        for (const char* name : {"Deutsch", "English", "Français"})
            language_.addItem(QString::fromUtf8(name));
        language_.setCurrentIndex(QSettings{}.value(languageKey, static_cast<int>(usedLanguage())).toInt());
        connect(&user_, &QComboBox::currentIndexChanged, this, [this] { showUser(); });
        connect(&language_, &QComboBox::currentIndexChanged, this, [this] { changeLanguage(); });
        connect(&buttons_, &QDialogButtonBox::accepted, this, [this] { tryLogIn(); });
        connect(&buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
        changeLanguage();
        showUser();
    }

private:
    void layOut()
    {
        heading_.setObjectName("heading");
        database_.setObjectName("hint");
        database_.setText(qt::toQt(place_.databaseName()));
        database_.setWordWrap(true);
        password_.setEchoMode(QLineEdit::Password);
        message_.setWordWrap(true);
        message_.hide();
        auto form = std::make_unique<QFormLayout>();
        form->setSpacing(10);
        form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
        form->addRow(&userLabel_, &user_);
        form->addRow(&passwordLabel_, &password_);
        form->addRow(&levelLabel_, &level_);
        form->addRow(&languageLabel_, &language_);
        userLabel_.setBuddy(&user_);
        passwordLabel_.setBuddy(&password_);
        languageLabel_.setBuddy(&language_);
        buttons_.addButton(&logIn_, QDialogButtonBox::AcceptRole);
        buttons_.addButton(&cancel_, QDialogButtonBox::RejectRole);
        logIn_.setDefault(true);
        auto layout = std::make_unique<QVBoxLayout>();
        layout->setContentsMargins(24, 20, 24, 20);
        layout->setSpacing(14);
        layout->addWidget(&heading_);
        layout->addWidget(&database_);
        layout->addLayout(form.release());
        layout->addWidget(&message_);
        layout->addStretch();
        layout->addWidget(&buttons_);
        setLayout(layout.release());
        setMinimumWidth(420);
    }

    const Account& chosen() const { return accounts_.at(static_cast<std::size_t>(user_.currentIndex())); }

    void showUser()
    {
        if (accounts_.empty()) return;
        level_.setText(qt::toQt(chosen().levelName));
        password_.setEnabled(chosen().hasPassword);
        password_.clear();
        message_.hide();
    }

    void changeLanguage()
    {
        useLanguage(static_cast<Language>(language_.currentIndex()));
        setWindowTitle(textOf(Text::Program));
        heading_.setText(textOf(Text::Program));
        userLabel_.setText(textOf(Text::User));
        passwordLabel_.setText(textOf(Text::Password));
        levelLabel_.setText(textOf(Text::Level));
        languageLabel_.setText(textOf(Text::LanguageWord));
        logIn_.setText(textOf(Text::LogIn));
        cancel_.setText(textOf(Text::Cancel));
        place_.language(nameOf(usedLanguage()));
    }

    void tryLogIn()
    {
        try {
            if (!place_.isPassword(chosen(), qt::fromQt(password_.text()))) return show(textOf(Text::WrongPassword));
            bool done = false;
            doPatiently(this, textOf(Text::LoggingIn), [this, &done] { done = place_.logIn(chosen()); });
            if (!done) return;
            QSettings{}.setValue(userKey, chosen().id);
            QSettings{}.setValue(languageKey, language_.currentIndex());
            accept();
        } catch (const Error& error) {
            show(qt::toQt(error.description));
        }
    }

    void show(const QString& message)
    {
        message_.setText(message);
        message_.show();
        password_.selectAll();
    }

    Workplace& place_;
    std::vector<Account> accounts_;
    QLabel heading_;
    QLabel database_;
    QLabel userLabel_;
    QLabel passwordLabel_;
    QLabel levelLabel_;
    QLabel languageLabel_;
    QComboBox user_;
    QLineEdit password_;
    QLabel level_;
    QComboBox language_;
    QLabel message_;
    QDialogButtonBox buttons_; ///< before its buttons, which leave it when they go
    QPushButton logIn_;
    QPushButton cancel_;
};

} // namespace

bool logIn(Workplace& place, QWidget* parent)
{
    LogInDialog dialog{place, parent};
    return dialog.exec() == QDialog::Accepted;
}

} // namespace tamarok::workbench
