#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/dialog_window.h"
#include "tamarok/form.h"

/// The controls of a window without pixels.
namespace tamarok::dialogs {

/// A button or frame: a control with a caption.
class CaptionedControl final : public WithMembers<CaptionedControl, controls::Control> {
public:
    /// @param typeName  a literal, such as "CommandButton"
    explicit CaptionedControl(std::string_view typeName) : typeName_{typeName} {}
    static std::span<const Member<CaptionedControl>> members() noexcept;
    std::string_view typeName() const override { return typeName_; }

    std::string Caption;

private:
    std::string_view typeName_;
};

/// The form of a dialog. Its controls are also reached by their names as if they were properties: "cmdOk.Visible".
/// Writing a control writes its text.
class DialogForm final : public controls::Form {
public:
    /// @param name  name of the form's class, such as "F_TreeView"
    explicit DialogForm(std::string_view name) { Name = name; }

    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    std::vector<std::string_view> memberNames() const override;

    /// Adds a control and returns it.
    template <class Control>
    std::shared_ptr<Control> add(std::shared_ptr<Control> control, std::string_view name, const Box& box)
    {
        addControl(control, name, box);
        return control;
    }
    void addButton(std::string_view name, const Box& box)
    {
        addControl(std::make_shared<CaptionedControl>("CommandButton"), name, box);
    }

    /// Returns the control of that name, or nullptr.
    std::shared_ptr<controls::Control> find(std::string_view name) const;
    /// Error 5, which names it, for a control that the form has not.
    controls::Control& control(std::string_view name) const;

    void resize(Size size) noexcept
    {
        Width = size.width;
        Height = size.height;
    }
    std::string text(std::string_view name) const;
    void text(std::string_view name, std::string_view text);
    Box place(std::string_view name) const;
    void place(std::string_view name, const Box& box);

private:
    void addControl(const std::shared_ptr<controls::Control>& control, std::string_view name, const Box& box);
};

} // namespace tamarok::dialogs
