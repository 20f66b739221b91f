#include <algorithm>
#include <vector>

#include "catalogue/clause_scan.h"
#include "catalogue/upper_case.h"
#include "runtime/convert.h"
#include "runtime/text.h"

#include "tamarok/comm_csel.h"
#include "tamarok/mcomm.h"

namespace tamarok {

namespace {

/// Trimmed, without brackets, and in upper case unless a quote holds a literal. The column PLAN is
/// a reserved word and the one name that keeps its brackets.
std::string normalise(std::string_view list)
{
    const std::string_view trimmed = text::trim(list);
    std::string buffer;
    std::string result{trimmed.find('\'') == std::string_view::npos ? catalogue::upperCase(trimmed, buffer) : trimmed};
    std::erase_if(result, [](char character) { return character == '[' || character == ']'; });
    constexpr std::string_view plan = "WARENKATALOG_TEMP.PLAN";
    if (result.find(plan) != std::string::npos) {
        result = text::replaceAll(result, plan, "WARENKATALOG_TEMP.[PLAN]");
    }
    return result;
}

/// The parts between commas outside parentheses, trimmed. They refer to `list`.
std::vector<std::string_view> splitList(std::string_view list)
{
    std::vector<std::string_view> parts;
    if (list.empty()) {
        return parts;
    }
    catalogue::checkScanLength(list, "The list");
    catalogue::ParenthesisDepth depth;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < list.size(); ++at) {
        if (depth.outsideAt(list[at]) && list[at] == ',') {
            parts.push_back(text::trim(list.substr(begin, at - begin)));
            begin = at + 1;
        }
    }
    parts.push_back(text::trim(list.substr(begin)));
    return parts;
}

} // namespace

std::string Comm_CSel::InsertToStr2(const Variant& str, std::string_view value, std::string_view /*strVer_type*/) const
{
    // A window expression can be neither grouped nor ordered on; the list carries the column under it.
    constexpr std::string_view rowNumber = "ROW_NUMBER() OVER(ORDER BY NN_POSITIONEN.NN_ID ASC)";

    std::string item = normalise(value);
    if (item.find(rowNumber) != std::string::npos) {
        item = text::replaceAll(item, rowNumber, "NN_POSITIONEN.NN_ID");
    }
    const std::string list = str.isString() ? normalise(str.asString()) : normalise(convert::toText(str));
    if (list.starts_with("FROM ")) {
        mComm::ShowMessage("ERROR in Sub InsertToStr2", 0);
    }

    std::vector<std::string_view> parts = splitList(list);
    if (!item.empty() && std::ranges::find(parts, item) == parts.end()) {
        parts.emplace_back(item);
    }
    std::string result;
    result.reserve(list.size() + item.size() + 1);
    for (const std::string_view part : parts) {
        if (part.empty()) {
            continue;
        }
        if (!result.empty()) {
            result += ',';
        }
        result += part;
    }
    return result;
}

} // namespace tamarok
