#include "host_platform.h"

#include "connections.h"
#include "tamarok_loc/loc_service.h"

namespace tamarok::cli {

std::int16_t RecordingMessageBox::show(std::string_view text, std::int32_t flags, std::string_view title)
{
    shown_.push_back({std::string{text}, flags, std::string{title}});
    if (buttons_.empty()) return 1;
    const std::int16_t button = buttons_.front();
    buttons_.pop_front();
    return button;
}

Platform commandPlatform(std::string_view locale)
{
    Platform platform;
    if (!locale.empty()) platform.regional = Regional::named(locale);
    platform.makeLocService = loc::makeLocService;
    platform.makeConnection = openConnection;
    return platform;
}

} // namespace tamarok::cli
