#include "dialogs/design_texts.h"

#include <QLocale>
#include <array>
#include <cstddef>

namespace tamarok::qt {

namespace {

struct Wording {
    const char* german;
    const char* english;
    const char* french;
};

/// In the order of DesignText.
constexpr std::array<Wording, 12> wordings{{
    {"OK", "OK", "OK"},
    {"Abbrechen", "Cancel", "Annuler"},
    {"Beenden", "Abort", "Abandonner"},
    {"Wiederholen", "Retry", "Réessayer"},
    {"Ignorieren", "Ignore", "Ignorer"},
    {"&Ja", "&Yes", "&Oui"},
    {"&Nein", "&No", "&Non"},
    {"Schließen", "Close", "Fermer"},
    {"Neu", "New", "Nouveau"},
    {"Speichern", "Save", "Enregistrer"},
    {"Info", "Info", "Info"},
    {"Tippen sucht", "Type to search", "Taper pour chercher"},
}};

} // namespace

QString designText(DesignText text)
{
    const Wording& wording = wordings[static_cast<std::size_t>(text)];
    switch (QLocale{}.language()) {
    case QLocale::German: return QString::fromUtf8(wording.german);
    case QLocale::French: return QString::fromUtf8(wording.french);
    default: return QString::fromUtf8(wording.english);
    }
}

} // namespace tamarok::qt
