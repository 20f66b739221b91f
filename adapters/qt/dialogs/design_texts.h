#pragma once

#include <QString>

/// The texts of the windows that no presenter sets, in the language of QLocale().
namespace tamarok::qt {

enum class DesignText { Ok, Cancel, Abort, Retry, Ignore, Yes, No, Close, New, Save, Info, TypingSearches };

QString designText(DesignText text);

} // namespace tamarok::qt
