#pragma once

#include <QString>
#include <string>
#include <string_view>

/// Texts between the library, which keeps UTF-8, and Qt.
namespace tamarok::qt {

inline QString toQt(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string fromQt(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

} // namespace tamarok::qt
