#include "areas/inventory_bookings.h"

namespace tamarok::database::bookings {

const Kind& drawKind(Random& random)
{
    return random.pickWeighted(kinds);
}

const Kind& drawKind(Random& random, Origin origin)
{
    std::vector<const Kind*> fitting;
    for (const Kind& kind : kinds)
        if (kind.origin == origin) fitting.push_back(&kind);
    return *random.pick(fitting);
}

Booking drawBooking(Random& random, const Kind& kind)
{
    constexpr double cubicMetresPerHour = 8.0;
    constexpr double plantsPerHour = 60.0;
    Booking booking{.kind = &kind};
    const double drawn = random.between(kind.leastQuantity, kind.mostQuantity);
    booking.quantity = kind.unit == "Stk" ? static_cast<double>(static_cast<std::int32_t>(drawn)) : cents(drawn);
    booking.price = cents(random.between(kind.leastPrice, kind.mostPrice));
    const double amount = cents(booking.quantity * booking.price);
    (kind.isRevenue ? booking.revenue : booking.costs) = amount;
    // Hours are booked with work; for timber and plants they follow from the quantity.
    if (kind.isRevenue) return booking;
    if (kind.unit == "Std") booking.hours = booking.quantity;
    if (kind.subject == Subject::timber) booking.hours = cents(booking.quantity / cubicMetresPerHour);
    if (kind.subject == Subject::goods) booking.hours = cents(booking.quantity / plantsPerHour);
    return booking;
}

} // namespace tamarok::database::bookings
