#include <memory>
#include <string>
#include <string_view>

#include "day/steps.h"
#include "host_platform.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_set.h"
#include "tamarok/controls.h"
#include "tamarok/form.h"
#include "tamarok/platform.h"

namespace tamarok::cli::day {

namespace {

/// A code field with its label on a form. Message boxes are printed.
class CodeForm {
public:
    explicit CodeForm(const Context& context) : context_{context}, scope_{quietPlatform(messages_)}
    {
        field_->Parent(form_);
        name_->Parent(form_);
    }

    /// Types a code and leaves the field.
    void check(std::string_view typed, bool message)
    {
        type(typed);
        const std::string statement = Comm_Set{}.CreateSQL(context_.session, "HOLZART_VALID", typed);
        const bool valid =
            Comm_CSel{}.Valid(context_.session, message, statement, field_, name_, "HA_LANG", nullptr, "");
        tell(typed, valid);
    }

    /// Types several codes, separated by commas, and leaves the field.
    void checkEach(std::string_view typed)
    {
        type(typed);
        const bool valid = Comm_CSel{}.ValidMulti(context_.session, true, "SELECT ID, HA_LANG FROM HOLZART", field_,
                                                  "HA", name_, "HA_LANG");
        tell(typed, valid);
    }

private:
    static Platform quietPlatform(const std::shared_ptr<RecordingMessageBox>& messages)
    {
        Platform platform = Platform::current();
        platform.messageBox = messages;
        return platform;
    }

    void type(std::string_view text)
    {
        field_->text("");
        controls::typeText(*field_, text);
    }

    void tell(std::string_view typed, bool valid)
    {
        std::string line = "\"" + std::string{typed} + "\" is " + (valid ? "valid" : "wrong") + ". Field \"" +
                           field_->text() + "\", key \"" + field_->Tag + "\", label \"" + name_->text() + "\"";
        for (const RecordingMessageBox::Shown& message : messages_->take())
            line += "; message: " + message.text;
        context_.output.write(line + "\n");
    }

    const Context& context_;
    std::shared_ptr<RecordingMessageBox> messages_ = std::make_shared<RecordingMessageBox>();
    PlatformScope scope_;
    std::shared_ptr<controls::Form> form_ = std::make_shared<controls::Form>();
    std::shared_ptr<controls::TextBox> field_ = std::make_shared<controls::TextBox>();
    std::shared_ptr<controls::TextBox> name_ = std::make_shared<controls::TextBox>();
};

} // namespace

/// What a species field does when the user leaves it: a valid code, none, wrong ones, and several at once.
void showFieldChecks(const Context& context)
{
    CodeForm form{context};
    form.check("fi", true);
    form.check("", true);
    form.check("xx", false);
    form.check("xx", true);
    form.checkEach("FI,TA,BU");
    form.checkEach("FI,xx");
}

} // namespace tamarok::cli::day
