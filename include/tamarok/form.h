#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/controls.h"

#pragma GCC visibility push(default)

/// The error number of a form's collection of controls.
namespace tamarok::errors {
inline constexpr std::int32_t controlNotFound = 730; ///< A form has no control of that name.
} // namespace tamarok::errors

namespace tamarok::controls {

/// The controls of a form, which keeps them alive. Positions begin at 1.
class ControlList final : public WithMembers<ControlList> {
public:
    static std::span<const Member<ControlList>> members() noexcept;
    std::string_view typeName() const override { return "Controls"; }

    std::int32_t Count() const noexcept { return static_cast<std::int32_t>(controls_.size()); }
    /// Returns a control by its position from 1 or, for a text, by its name, compared without regard to case.
    /// Errors: 9 for a position outside the list, 730 for an unknown name.
    const std::shared_ptr<Control>& Item(const Variant& index) const;

    const std::vector<std::shared_ptr<Control>>& all() const noexcept { return controls_; }

private:
    friend class Control;
    std::vector<std::shared_ptr<Control>> controls_;
};

/// A form without a window. It is shown unless `Visible` is false.
class Form : public WithMembers<Form, Control> {
public:
    static std::span<const Member<Form>> members() noexcept;
    std::string_view typeName() const override { return "Form"; }

    using Control::Parent;
    /// Error 438: a form has no parent.
    void Parent(const ObjectRef& parent) override;

    const std::shared_ptr<ControlList>& controls() const noexcept { return controls_; }

    /// Returns the control that has the focus, an empty reference if none has.
    std::shared_ptr<Control> ActiveControl() const noexcept { return active_.lock(); }

    std::string Caption;
    std::int16_t MousePointer = 0; ///< 0 default, 11 hourglass; by name Error 380 unless 0 to 15 or 99

private:
    friend class Control;
    std::shared_ptr<ControlList> controls_ = std::make_shared<ControlList>();
    std::weak_ptr<Control> active_;
};

/// The form that takes the four conversion factors of Comm_Get::GetHolzTabValue. The properties hold what was written,
/// "" before.
class ConversionFactorForm final : public WithMembers<ConversionFactorForm, Form> {
public:
    static std::span<const Member<ConversionFactorForm>> members() noexcept;
    std::string_view typeName() const override { return "F_UFakt"; }

    Variant txtUFakt_Ato{""};
    Variant txtUFakt_Lut{""};
    Variant txtUFakt_Rm{""};
    Variant txtUFakt_Stk100{""};
};

} // namespace tamarok::controls

#pragma GCC visibility pop
