#include <string>
#include <vector>

#include "ado/first_row.h"

#include "tamarok/ado.h"
#include "tamarok/comm_csel.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/loc_service.h"
#include "tamarok/mcomm.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

namespace tamarok {

namespace {

constexpr std::int16_t unknownCode = 223;

/// A label of a code field, and the column that it shows.
struct CodeLabel {
    const ObjectRef& control;
    std::string_view column; ///< "" for a label that is not used

    bool isUsed() const noexcept { return !column.empty(); }
    void show(std::string_view text) const
    {
        if (isUsed()) require(control, "the label of a code field").put("text", text);
    }
};

std::string textOf(const Object& control, std::string_view property)
{
    return convert::toText(control.get(property, {}));
}

void showUnknownCode(const TmkVar& session)
{
    mComm::ShowMessage(Platform::locService()->GetText(unknownCode, session), 0);
}

void clearLabels(Object& field, const CodeLabel& first, const CodeLabel& second)
{
    first.show("");
    second.show("");
    field.put("Tag", "");
}

/// Required by the contract: the field may be hidden, so that a failure to focus it is none of the check.
void tryFocus(Object& field)
{
    try {
        field.call("SetFocus", {});
    } catch (const Error&) { // NOLINT(bugprone-empty-catch)
    }
}

/// What happens to a field whose statement gave no row. Returns whether the field is valid all the same.
bool judgeMissing(const TmkVar& session, bool showsMessage, Object& field, const CodeLabel& first,
                  const CodeLabel& second)
{
    if (textOf(field, "Text").empty()) {
        clearLabels(field, first, second);
        return true;
    }
    if (!showsMessage) {
        clearLabels(field, first, second);
        field.put("Text", "");
        return false;
    }
    showUnknownCode(session);
    tryFocus(field);
    return false;
}

/// Splits a text at each comma; an empty text is one empty part.
std::vector<std::string> codesOf(std::string_view list)
{
    std::vector<std::string> codes;
    for (std::size_t at = 0; at <= list.size();) {
        const std::size_t comma = std::min(list.find(',', at), list.size());
        codes.emplace_back(list.substr(at, comma - at));
        at = comma + 1;
    }
    return codes;
}

std::string joined(const std::vector<std::string>& parts)
{
    std::string list;
    for (std::size_t index = 0; index < parts.size(); ++index)
        list.append(index == 0 ? "" : ",").append(parts[index]);
    return list;
}

} // namespace

bool Comm_CSel::Valid(const TmkVar& tmkVar, bool bolMessage, std::string_view strSQL, const ObjectRef& txtValid,
                      const ObjectRef& txtLabel1, std::string_view ColLabel1, const ObjectRef& txtLabel2,
                      std::string_view ColLabel2) const
{
    const CodeLabel first{txtLabel1, ColLabel1};
    const CodeLabel second{txtLabel2, ColLabel2};
    ado::Recordset row;
    row.Open(strSQL, tmkVar.db_ADO, ado::CursorType::OpenForwardOnly, ado::LockType::ReadOnly);
    bool isValid = true;
    if (row.AtEOF()) {
        isValid = txtValid && judgeMissing(tmkVar, bolMessage, *txtValid, first, second);
    } else {
        require(txtValid, "txtValid").put("Tag", row.Fields().Item(0).Value());
        for (const CodeLabel& label : {first, second})
            if (label.isUsed()) label.show(ado::fieldText(row.Fields().Item(label.column).Value()));
    }
    row.Close();
    return isValid;
}

bool Comm_CSel::ValidMulti(const TmkVar& tmkVar, bool bolMessage, std::string_view strSQL, const ObjectRef& txtValid,
                           std::string_view ColValid, const ObjectRef& txtLabel1, std::string_view ColLabel1) const
{
    Object& field = require(txtValid, "txtValid");
    const CodeLabel label{txtLabel1, ColLabel1};
    const std::vector<std::string> codes = codesOf(textOf(field, "Text"));
    const std::string_view word = text::findNoCase(strSQL, "WHERE") == 0 ? " WHERE " : " AND ";
    std::vector<std::string> keys;
    std::vector<std::string> names;
    bool isValid = true;
    for (const std::string& code : codes) {
        const std::string statement =
            std::string{strSQL}.append(word).append(ColValid).append(" = '").append(code).append("'");
        isValid = Valid(tmkVar, false, statement, txtValid, txtLabel1, ColLabel1, {}, "");
        if (!isValid) {
            keys.clear();
            names.clear();
            break;
        }
        keys.push_back(textOf(field, "Tag"));
        if (label.isUsed()) names.push_back(textOf(require(txtLabel1, "txtLabel1"), "text"));
    }
    field.put("Text", joined(codes));
    field.put("Tag", joined(keys));
    label.show(joined(names));
    if (isValid || textOf(field, "Text").empty()) return isValid;
    if (bolMessage) {
        showUnknownCode(tmkVar);
        field.call("SetFocus", {}); // required by the contract: unlike in Valid, a failure reaches the caller
    } else {
        field.put("Text", "");
    }
    return isValid;
}

} // namespace tamarok
