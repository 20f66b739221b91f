#pragma once

#include <QDate>
#include <cmath>

#include "tamarok/date.h"

/// Dates between the library, which counts days from 30 December 1899, and Qt.
namespace tamarok::qt {

inline QDate toQtDate(Date date)
{
    return QDate{1899, 12, 30}.addDays(static_cast<qint64>(std::trunc(date.days)));
}

inline Date toDate(const QDate& date)
{
    return Date{static_cast<double>(QDate{1899, 12, 30}.daysTo(date))};
}

} // namespace tamarok::qt
