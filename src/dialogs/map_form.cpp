#include "map_form.h"

#include <algorithm>
#include <cstdint>

#include "tamarok/error.h"
#include "tamarok/loc_service.h"

namespace tamarok::dialogs {

namespace {

constexpr std::string_view backPage = "/447/back.php";
constexpr std::string_view underWay = "parURL=";

struct Coordinate {
    std::string_view key;
    std::int32_t index; ///< its element of the array
};

constexpr std::array<Coordinate, 2> coordinates{{{"parPosX", 0}, {"parPosY", 1}}};

bool contains(std::string_view text, std::string_view wanted)
{
    return text.find(wanted) != std::string_view::npos;
}

/// The element at an index of the array. Error 9 outside its bounds.
std::string& elementAt(StringArray& array, std::int32_t index)
{
    const std::int64_t position = std::int64_t{index} - array.lower;
    if (position < 0 || position >= static_cast<std::int64_t>(array.values.size())) {
        throw Error{errors::subscriptOutOfRange,
                    "Subscript out of range: the array of coordinates has no element " + std::to_string(index) + "."};
    }
    return array.values[static_cast<std::size_t>(position)];
}

} // namespace

bool MapAddress::isLast() const
{
    if (!contains(address_, underWay) && contains(address_, endpoints_.home)) return true;
    std::string_view service = endpoints_.service;
    while (service.ends_with('/'))
        service.remove_suffix(1);
    return contains(address_, std::string{service}.append(backPage)) && contains(address_, "parPosX") &&
           contains(address_, "parPosY");
}

// A key directly behind "?" belongs to the first part and is not found. Required by the contract. Do not correct.
void MapAddress::read(StringArray& point) const
{
    std::string_view rest = address_;
    for (bool more = true; more;) {
        const std::size_t end = rest.find('&');
        more = end != std::string_view::npos;
        const std::string_view part = rest.substr(0, end);
        if (more) rest.remove_prefix(end + 1);
        for (const Coordinate& coordinate : coordinates) {
            const std::string start = std::string{coordinate.key} + "=";
            if (part.starts_with(start)) elementAt(point, coordinate.index) = part.substr(start.size());
        }
    }
}

void MapForm::run(std::string_view address, StringArray& point)
{
    window_.navigate(address);
    point_ = point;
    Platform::locService()->TranslateForm(session_, window_.form());
    window_.showModal(*this);
    point = point_;
}

void MapForm::clicked(std::string_view /*button*/)
{
    window_.close();
}

void MapForm::resized()
{
    constexpr float belowBrowser = 480;
    constexpr float besideBrowser = 30;
    constexpr float buttonFromRight = 1395;
    constexpr float buttonFromBottom = 420;
    const Size inner = window_.innerSize();
    window_.place("WebBrowser1",
                  {0, 0, std::max(inner.width - besideBrowser, 0.0F), std::max(inner.height - belowBrowser, 0.0F)});
    Box button = window_.place("btnClose");
    button.left = inner.width - buttonFromRight;
    button.top = inner.height - buttonFromBottom;
    window_.place("btnClose", button);
}

void MapForm::pageFinished()
{
    const std::string shown = window_.address();
    const MapAddress address{shown, endpoints_};
    if (!address.isLast()) return;
    address.read(point_);
    window_.close();
}

} // namespace tamarok::dialogs
