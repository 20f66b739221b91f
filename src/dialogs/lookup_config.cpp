#include "lookup_config.h"

#include "tamarok/text.h"

namespace tamarok::dialogs {

LookupConfig::LookupConfig(std::string_view text) :
    hidesFirstColumn{text::mid(text, 1, 1) == "1"}, selectsSeveral{text::mid(text, 2, 1) == "1"},
    entersRows{text::mid(text, 3, 1) == "1"}, newClosesDialog{text::mid(text, 3, 1) == "2"},
    withoutEnter{text::mid(text, 4, 1) == "1"}
{}

} // namespace tamarok::dialogs
