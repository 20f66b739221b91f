#pragma once

#include <array>
#include <string>
#include <string_view>

#include "tamarok/dialog_windows.h"
#include "tamarok/platform.h"
#include "tamarok/string_array.h"
#include "tamarok/tmkvar.h"

namespace tamarok::dialogs {

/// The address of a page that a map service has shown, read for the point that the user chose.
class MapAddress {
public:
    MapAddress(std::string_view address, const MapEndpoints& endpoints) : address_{address}, endpoints_{endpoints} {}

    /// Returns whether the service is done with the user: it has left for the vendor's home page, or it has sent the
    /// browser to the back page with both coordinates.
    bool isLast() const;

    /// Puts the coordinates that stand behind an "&" into `point`: X into element 0, Y into element 1.
    void read(StringArray& point) const;

private:
    std::string_view address_;
    const MapEndpoints& endpoints_;
};

/// The map dialog: shows a page of the map service until it gives back a point.
class MapForm final : public MapEvents {
public:
    /// @param endpoints  both set
    MapForm(const TmkVar& session, const MapEndpoints& endpoints, MapWindow& window) :
        session_{session}, endpoints_{endpoints}, window_{window}
    {}

    /// Shows the dialog. See Comm_Forms::WebBrowser_Run.
    void run(std::string_view address, StringArray& point);

    void clicked(std::string_view button) override;
    void closeAsked() override { window_.close(); }
    void resized() override;
    void pageFinished() override;

private:
    TmkVar session_;
    MapEndpoints endpoints_;
    MapWindow& window_;
    StringArray point_;
};

} // namespace tamarok::dialogs
