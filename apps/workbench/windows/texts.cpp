#include "windows/texts.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <array>
#include <cstddef>
#include <memory>

namespace tamarok::workbench {

namespace {

struct Wording {
    Text text;
    const char* german;
    const char* english;
    const char* french;
};

constexpr std::array<Wording, static_cast<std::size_t>(Text::count_)> wordings{{
    {Text::Program, "Tamarok Arbeitsplatz", "Tamarok Workbench", "Tamarok Poste de travail"},
    {Text::LogIn, "Anmelden", "Log in", "Se connecter"},
    {Text::User, "Benutzer", "User", "Utilisateur"},
    {Text::Password, "Kennwort", "Password", "Mot de passe"},
    {Text::LoggingIn, "Die Anmeldung wird geprüft …", "Checking the login …", "Vérification de la connexion …"},
    {Text::Level, "Berechtigungsebene", "Access level", "Niveau d’accès"},
    {Text::LanguageWord, "Sprache", "Language", "Langue"},
    {Text::WrongPassword, "Das Kennwort stimmt nicht.", "The password is wrong.", "Le mot de passe est incorrect."},
    {Text::Cancel, "Abbrechen", "Cancel", "Annuler"},
    {Text::Close, "Schließen", "Close", "Fermer"},
    {Text::Lists, "Listen", "Lists", "Listes"},
    {Text::ReadOnly, "nur lesen", "read only", "lecture seule"},
    {Text::Search, "Suchen", "Search", "Rechercher"},
    {Text::SearchHint, "Eine Liste suchen; die Eingabetaste öffnet sie", "Find a list; Enter opens it",
     "Chercher une liste ; Entrée l’ouvre"},
    {Text::Columns, "Spalten …", "Columns …", "Colonnes …"},
    {Text::ColumnsHint, "Spalten der Liste wählen und ordnen", "Choose and order the columns of the list",
     "Choisir et ordonner les colonnes de la liste"},
    {Text::Available, "Verfügbar", "Available", "Disponibles"},
    {Text::Shown, "In der Liste", "In the list", "Dans la liste"},
    {Text::Add, "Hinzufügen", "Add", "Ajouter"},
    {Text::Remove, "Entfernen", "Remove", "Retirer"},
    {Text::Up, "Nach oben", "Move up", "Monter"},
    {Text::Down, "Nach unten", "Move down", "Descendre"},
    {Text::Group, "Gruppieren", "Group", "Grouper"},
    {Text::GroupHint, "Die Messwerte nach den anderen Spalten summieren", "Sum the measures by the other columns",
     "Additionner les mesures selon les autres colonnes"},
    {Text::Chart, "Bild", "Chart", "Graphique"},
    {Text::ChartHint, "Einen Messwert nach Gruppen als Balken zeigen", "Show a measure by its groups as bars",
     "Afficher une mesure par groupe en barres"},
    {Text::By, "nach", "by", "par"},
    {Text::Measure, "Messwert", "Measure", "Mesure"},
    {Text::Others, "Übrige", "Others", "Autres"},
    {Text::Export, "Exportieren …", "Export …", "Exporter …"},
    {Text::ExportHint, "Die ganze Liste als CSV-Datei speichern", "Save the whole list as a CSV file",
     "Enregistrer toute la liste dans un fichier CSV"},
    {Text::Statement, "Anweisung …", "Statement …", "Instruction …"},
    {Text::StatementHint, "Die SQL-Anweisung der Liste zeigen", "Show the SQL statement of the list",
     "Afficher l’instruction SQL de la liste"},
    {Text::Copy, "Kopieren", "Copy", "Copier"},
    {Text::Copied, "Kopiert.", "Copied.", "Copié."},
    {Text::Refresh, "Neu lesen", "Refresh", "Actualiser"},
    {Text::RefreshHint, "Die Liste neu lesen", "Read the list again", "Relire la liste"},
    {Text::FilterBy, "Nur %1 = %2", "Only %1 = %2", "Seulement %1 = %2"},
    {Text::FilterEmpty, "leer", "empty", "vide"},
    {Text::RemoveFilters, "Alle Filter entfernen", "Remove all filters", "Retirer tous les filtres"},
    {Text::CopyCell, "Zelle kopieren", "Copy cell", "Copier la cellule"},
    {Text::ShowRecords, "Zeilen der Gruppe zeigen", "Show the rows of the group", "Afficher les lignes du groupe"},
    {Text::Rows, "%1 Zeilen", "%1 rows", "%1 lignes"},
    {Text::OneRow, "1 Zeile", "1 row", "1 ligne"},
    {Text::Reading, "Lese … %1", "Reading … %1", "Lecture … %1"},
    {Text::Stop, "Anhalten", "Stop", "Arrêter"},
    {Text::StopHint, "Das Lesen anhalten", "Stop the reading", "Arrêter la lecture"},
    {Text::Stopped, "Angehalten. Neu lesen mit F5.", "Stopped. Refresh with F5.", "Arrêté. Actualiser avec F5."},
    {Text::Total, "Summe", "Total", "Total"},
    {Text::Saved, "%1 Zeilen gespeichert: %2", "%1 rows saved: %2", "%1 lignes enregistrées : %2"},
    {Text::Deleted, "(gelöscht)", "(deleted)", "(supprimé)"},
    {Text::Settlement, "Abrechnung", "Settlement", "Décompte"},
    {Text::File, "&Datei", "&File", "&Fichier"},
    {Text::View, "&Ansicht", "&View", "&Affichage"},
    {Text::Help, "&Hilfe", "&Help", "&Aide"},
    {Text::Quit, "Beenden", "Quit", "Quitter"},
    {Text::LightColours, "Hell", "Light", "Clair"},
    {Text::DarkColours, "Dunkel", "Dark", "Sombre"},
    {Text::SystemColours, "Wie das System", "As the system", "Comme le système"},
    {Text::CloseList, "Liste schließen", "Close list", "Fermer la liste"},
    {Text::Welcome, "Willkommen", "Welcome", "Bienvenue"},
    {Text::WelcomeText,
     "Links stehen alle Listen, die Sie sehen dürfen. Ein Doppelklick oder die Eingabetaste öffnet eine davon. "
     "Ein Klick auf einen Spaltenkopf sortiert, die rechte Maustaste filtert nach dem Wert einer Zelle.",
     "On the left are all lists that you may see. A double click or Enter opens one of them. A click on a head sorts, "
     "the right mouse button filters by the value of a cell.",
     "À gauche se trouvent toutes les listes que vous pouvez voir. Un double-clic ou Entrée en ouvre une. Un clic sur "
     "un "
     "en-tête trie, le bouton droit filtre selon la valeur d’une cellule."},
    {Text::About, "Über das Programm", "About", "À propos"},
    {Text::MakingSample, "Die Beispieldatenbank wird angelegt …", "Making the sample database …",
     "Création de la base d’exemple …"},
    {Text::Shortcuts, "Tasten", "Keys", "Raccourcis"},
    {Text::NoRows, "Keine Zeilen", "No rows", "Aucune ligne"},
    {Text::Groups, "%1, Gruppen", "%1, groups", "%1, groupes"},
    {Text::MeasureList, "In dieser Liste messen", "Measure in this list", "Mesurer dans cette liste"},
    {Text::TimberList, "Holzliste %1", "Timber list %1", "Liste de bois %1"},
    {Text::Locking, "Die Holzliste %1 wird gesperrt …", "Locking timber list %1 …",
     "Verrouillage de la liste de bois %1 …"},
    {Text::Species, "Holzart", "Species", "Essence"},
    {Text::Assortment, "Sortiment", "Assortment", "Assortiment"},
    {Text::Quality, "Güteklasse", "Quality", "Qualité"},
    {Text::BarkKey, "Rinde", "Bark", "Écorce"},
    {Text::Diameter, "Durchmesser (cm)", "Diameter (cm)", "Diamètre (cm)"},
    {Text::Length, "Länge (m)", "Length (m)", "Longueur (m)"},
    {Text::Pieces, "Stück", "Pieces", "Pièces"},
    {Text::Volume, "Volumen", "Volume", "Volume"},
    {Text::Bark, "Rindenabzug", "Bark deduction", "Déduction d’écorce"},
    {Text::Class, "Stärkeklasse", "Strength class", "Classe de diamètre"},
    {Text::SaveLine, "Stamm &speichern", "&Save log", "Enregi&strer la grume"},
    {Text::LineSaved, "Stamm %1 gespeichert.", "Log %1 saved.", "Grume %1 enregistrée."},
    {Text::LineUnsaved, "Der Stamm ist noch nicht gespeichert.", "The log is not saved yet.",
     "La grume n’est pas encore enregistrée."},
    {Text::Discard, "Verwerfen", "Discard", "Abandonner"},
    {Text::SaveWord, "Speichern", "Save", "Enregistrer"},
    {Text::LookUpHint, "F4 zeigt die Auswahl", "F4 shows the choice", "F4 affiche le choix"},
    {Text::Options, "Einstellungen", "Options", "Options"},
    {Text::OptionsHint, "Ein Doppelklick ändert einen Wert. Er gilt sofort für alle Arbeitsplätze.",
     "A double click changes a value. It holds at once for all workstations.",
     "Un double-clic modifie une valeur. Elle vaut aussitôt pour tous les postes."},
    {Text::Option, "Einstellung", "Option", "Option"},
    {Text::WholeNumber, "Ganze Zahl", "Whole number", "Nombre entier"},
    {Text::DecimalNumber, "Dezimalzahl", "Decimal number", "Nombre décimal"},
    {Text::TextWord, "Text", "Text", "Texte"},
    {Text::DateWord, "Datum", "Date", "Date"},
    {Text::OptionSaved, "%1 gespeichert.", "%1 saved.", "%1 enregistré."},
}};

constexpr bool isComplete()
{
    for (std::size_t index = 0; index < wordings.size(); ++index) {
        const Wording& wording = wordings.at(index);
        if (static_cast<std::size_t>(wording.text) != index || wording.german == nullptr) return false;
    }
    return true;
}
static_assert(isComplete());

constexpr std::array<std::string_view, 3> languageNames{"GERMAN", "ENGLISH", "FRENCH"};

constexpr std::array<const char*, 3> locales{"de_AT", "en_GB", "fr_FR"};

} // namespace

Language languageOf(std::string_view name)
{
    for (std::size_t index = 0; index < languageNames.size(); ++index)
        if (languageNames.at(index) == name) return static_cast<Language>(index);
    return Language::German;
}

std::string_view nameOf(Language language)
{
    return languageNames.at(static_cast<std::size_t>(language));
}

void useLanguage(Language language)
{
    const QLocale locale{QString::fromLatin1(locales.at(static_cast<std::size_t>(language)))};
    QLocale::setDefault(locale);
    if (qApp == nullptr) return;
    // Qt's own texts, such as those of the file dialog. Without its package of translations they are English.
    constexpr const char* name = "textsOfQt";
    auto* texts = qApp->findChild<QTranslator*>(name);
    if (texts == nullptr) {
        texts = std::make_unique<QTranslator>(qApp).release(); // the application's own
        texts->setObjectName(name);
    }
    QCoreApplication::removeTranslator(texts);
    if (texts->load(locale, "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(texts);
}

Language usedLanguage()
{
    switch (QLocale{}.language()) {
    case QLocale::English: return Language::English;
    case QLocale::French: return Language::French;
    default: return Language::German;
    }
}

QString textOf(Text text)
{
    const Wording& wording = wordings.at(static_cast<std::size_t>(text));
    switch (usedLanguage()) {
    case Language::English: return QString::fromUtf8(wording.english);
    case Language::French: return QString::fromUtf8(wording.french);
    case Language::German: break;
    }
    return QString::fromUtf8(wording.german);
}

} // namespace tamarok::workbench
