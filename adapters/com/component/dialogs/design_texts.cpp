#include "design_texts.h"

#include <array>
#include <cstddef>

#include "windows_headers.h"

namespace tamarok::com {

namespace {

struct Wording {
    std::string_view german;
    std::string_view english;
    std::string_view french;
};

/// In the order of DesignText.
constexpr std::array wordings{
    Wording{"OK", "OK", "OK"},        Wording{"Schließen", "Close", "Fermer"},
    Wording{"Neu", "New", "Nouveau"}, Wording{"Speichern", "Save", "Enregistrer"},
    Wording{"Info", "Info", "Info"},
};

} // namespace

std::string_view designText(DesignText text) noexcept
{
    const Wording& wording = wordings[static_cast<std::size_t>(text)];
    switch (PRIMARYLANGID(GetUserDefaultUILanguage())) {
    case LANG_GERMAN: return wording.german;
    case LANG_FRENCH: return wording.french;
    default: return wording.english;
    }
}

} // namespace tamarok::com
