#include "procedures/models_ins.h"

#include <array>
#include <string>

#include "failures.h"

#include "tamarok/convert.h"
#include "tamarok/text.h"

namespace tamarok::embedded {

namespace {

// Sizes of the server's parameters in characters.
constexpr std::size_t relationSize = 60;
constexpr std::size_t nameSize = 80;
constexpr std::size_t modelSize = 1000;

bool isNone(const Variant& value)
{
    return value.isNull() || value.isEmpty();
}

/// A text of the key, cut to its size. Error 50000, the number of user-defined errors, for an empty one.
std::string keyText(const Variant& value, std::size_t size)
{
    const std::string given = isNone(value) ? std::string{} : convert::toText(value);
    if (text::trimRight(given).empty())
        throw failure(native::userDefined, "tmk_MODELS_INS: the relation or the name is empty.");
    return std::string{text::left(given, size)};
}

/// The model, cut to its size and then to whole numbers.
Variant modelText(const Variant& value)
{
    if (isNone(value)) return Null{};
    const std::string given = convert::toText(value);
    if (text::length(given) < modelSize) return given;
    const std::string_view cut = text::left(given, modelSize);
    return cut.substr(0, cut.rfind(','));
}

/// Null for 0, which names no user and no level.
Variant keyOrNull(const Variant& value)
{
    return isNone(value) || convert::toLongLong(value) == 0 ? Variant{Null{}} : value;
}

/// Updates the row of the relation and name, or inserts one if there is none. The call is one transaction, so that two
/// stations never write two rows.
void writeModel(ProcedureScope& scope, std::span<const Variant> arguments)
{
    const std::array sent{modelText(arguments[2]),
                          arguments[3],
                          keyOrNull(arguments[4]),
                          arguments[5],
                          keyOrNull(arguments[6]),
                          Variant{keyText(arguments[0], relationSize)},
                          Variant{keyText(arguments[1], nameSize)}};
    const std::int64_t found =
        scope.execute("UPDATE MODELS SET MODEL=?,STANDARD=?,ID_USER=?,NICHT_ANDERBAR=?,ID_ACCESS_LEVELS=? "
                      "WHERE RELATION=? AND NAME=?",
                      sent);
    if (found == 0) {
        scope.execute("INSERT INTO MODELS(MODEL,STANDARD,ID_USER,NICHT_ANDERBAR,ID_ACCESS_LEVELS,RELATION,NAME) "
                      "VALUES(?,?,?,?,?,?,?)",
                      sent);
    }
}

} // namespace

Procedure modelsIns()
{
    return {"tmk_MODELS_INS",
            {{"RELATION"}, {"NAME"}, {"MODEL"}, {"STANDARD"}, {"ID_USER"}, {"NICHT_ANDERBAR"}, {"ID_ACCESS_LEVELS"}},
            &writeModel};
}

} // namespace tamarok::embedded
