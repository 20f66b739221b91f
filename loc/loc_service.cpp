#include "tamarok_loc/loc_service.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"
#include "tamarok/tmkvar.h"
#include "tamarok/variant.h"

namespace tamarok::loc {
namespace {

/// Returns the text number that a tag names: a text of one to five digits with a value from 1 to 32,767.
/// nullopt for any other tag, so that tags of other uses stay untouched.
std::optional<std::int16_t> textNumber(const Variant& tag)
{
    if (!tag.isString()) return std::nullopt;
    const std::string& digits = tag.asString();
    if (digits.empty() || digits.size() > 5) return std::nullopt;
    std::int32_t number = 0;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9') return std::nullopt;
        number = number * 10 + (digit - '0');
    }
    if (number == 0 || number > INT16_MAX) return std::nullopt;
    return static_cast<std::int16_t>(number);
}

/// Returns a property, or nullopt if the object has none of that name. Other errors reach the caller.
std::optional<Variant> optionalProperty(const Object& object, std::string_view name)
{
    try {
        return object.get(name, {});
    } catch (const Error& error) {
        if (error.number != errors::noSuchMember) throw;
        return std::nullopt;
    }
}

/// Returns the controls of a form: the elements of its array `Controls`, or of its collection of that name, whose
/// positions begin at 1.
std::vector<Variant> controlsOf(const Object& form)
{
    const std::optional<Variant> controls = optionalProperty(form, "Controls");
    if (!controls) return {};
    if (controls->isArray()) return controls->asArray().elements();
    if (!controls->isObject() || !controls->asObject()) return {};
    const Object& collection = *controls->asObject();
    std::vector<Variant> found;
    const std::int32_t count = convert::toLong(collection.get("Count", {}));
    for (std::int32_t position = 1; position <= count; ++position) {
        const Variant index{position};
        found.push_back(collection.get("Item", {&index, 1}));
    }
    return found;
}

/// The service over table STRINGS. It keeps no state: each call runs one statement.
class TextTableService final : public LocService {
public:
    void TranslateForm(const TmkVar& session, Object& form) override
    {
        translate(session, form);
        for (const Variant& control : controlsOf(form))
            if (control.isObject() && control.asObject()) translate(session, *control.asObject());
    }

    std::string GetText(std::int16_t number, const TmkVar& session) override
    {
        // The customer's wording wins; a row whose texts are all Null reads as an empty text.
        const std::string nullFunction = session.bolOracle ? "NVL" : "ISNULL";
        const std::string& language = session.strLanguage;
        const std::string digits = std::to_string(number);
        ado::Recordset texts;
        texts.Open("SELECT " + nullFunction + "(CUSTOM_" + language + "," + nullFunction + "(" + language +
                       ",'')) FROM STRINGS WHERE ID_STRING = " + digits,
                   session.db_ADO);
        std::string text;
        if (!texts.AtEOF()) {
            const Variant value = texts.Fields().Item(0).Value();
            if (value.isString()) text = value.asString();
        }
        texts.Close();
        return text.empty() ? "<" + digits + ">" : text;
    }

    /// The text as an SQL literal: computed columns place it between parentheses.
    std::string GetText2(std::int16_t number, const TmkVar& session) override
    {
        return "N'" + text::replaceAll(GetText(number, session), "'", "''") + "'";
    }

    void RunProcedure(const TmkVar& session, std::string_view name, ado::Command& command) override
    {
        command.ActiveConnection = session.db_ADO;
        command.CommandText = name;
        command.CommandType = ado::CommandType::StoredProcedure;
        command.Execute();
    }

private:
    /// Sets the property Caption of an object whose Tag is a text number.
    void translate(const TmkVar& session, Object& object)
    {
        const std::optional<Variant> tag = optionalProperty(object, "Tag");
        if (!tag) return;
        if (const std::optional<std::int16_t> number = textNumber(*tag))
            object.put("Caption", GetText(*number, session));
    }
};

} // namespace

std::unique_ptr<LocService> makeLocService()
{
    return std::make_unique<TextTableService>();
}

} // namespace tamarok::loc
