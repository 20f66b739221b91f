#include "window_shell.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "failures.h"
#include "wide_text.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::com {

namespace {

/// What the borders and the title add to the size of a window, in twips. The presenters lay their controls out for
/// these borders; those of the screen differ from one system to the next.
constexpr dialogs::Size borders{110, 350};
constexpr float twipsPerInch = 1440;
/// Room around the controls, in twips.
constexpr float margin = 120;
constexpr int firstId = 100;
constexpr UINT laterMessage = WM_APP + 1;

/// A control as an operation reaches it by name: its caption and its tag.
class ShellControl final : public controls::Control {
public:
    ShellControl(WindowShell& shell, std::string_view name) : shell_{shell} { Name = name; }
    std::string_view typeName() const override { return "Control"; }
    Variant get(std::string_view name, std::span<const Variant> args) const override
    {
        return isText(name) ? Variant{shell_.controlText(Name)} : Control::get(name, args);
    }
    void put(std::string_view name, const Variant& value) override
    {
        if (isText(name)) return shell_.controlText(Name, convert::toText(value));
        Control::put(name, value);
    }

private:
    static bool isText(std::string_view name)
    {
        return text::equalsNoCase(name, "Caption") || text::equalsNoCase(name, "Text");
    }

    WindowShell& shell_;
};

std::string textOf(HWND window)
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    return toUtf8(std::wstring_view{text}.substr(0, static_cast<std::size_t>(length)));
}

HFONT makeMessageFont() noexcept
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0) == 0) return nullptr;
    return CreateFontIndirectW(&metrics.lfMessageFont);
}

int screenDots() noexcept
{
    const HDC screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return dots > 0 ? dots : 96;
}

/// The template of an empty dialog: no menu, class or title follows it.
struct EmptyDialog {
    DLGTEMPLATE head{
        WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | DS_MODALFRAME, WS_EX_CONTROLPARENT, 0, 0, 0, 0, 0};
    std::array<WORD, 3> rest{};
};

} // namespace

Variant ShellForm::get(std::string_view name, std::span<const Variant> args) const
{
    if (text::equalsNoCase(name, "Width")) return double{shell_.outerSize().width};
    if (text::equalsNoCase(name, "Height")) return double{shell_.outerSize().height};
    if (text::equalsNoCase(name, "Caption")) return shell_.caption();
    return Form::get(name, args);
}

void ShellForm::put(std::string_view name, const Variant& value)
{
    const dialogs::Size size = shell_.outerSize();
    Form::put(name, value); // refuses what is no size
    if (text::equalsNoCase(name, "Width")) shell_.outerSize({Width, size.height});
    if (text::equalsNoCase(name, "Height")) shell_.outerSize({size.width, Height});
    if (text::equalsNoCase(name, "Caption")) shell_.caption(Caption);
}

WindowShell::WindowShell(std::string_view formName) :
    owner_{GetActiveWindow()}, dotsPerInch_{screenDots()}, form_{std::make_shared<ShellForm>(*this)}
{
    form_->Name = formName;
    const INITCOMMONCONTROLSEX wanted{sizeof wanted, ICC_TREEVIEW_CLASSES | ICC_PROGRESS_CLASS | ICC_LISTVIEW_CLASSES |
                                                         ICC_DATE_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&wanted);
    const EmptyDialog empty;
    window_ = CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &empty.head, owner_, handle, 0);
    if (window_ == nullptr)
        throw Error{errors::cannotCreateObject, "The system makes no window for the dialog.", std::string{formName}};
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    font_ = makeMessageFont();
}

WindowShell::~WindowShell()
{
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
    if (font_ != nullptr) DeleteObject(font_);
}

HWND WindowShell::addControl(std::string_view name, const ControlKind& kind, std::string_view frame)
{
    const int id = firstId + static_cast<int>(names_.size());
    Part part;
    part.frame = frame;
    part.window =
        CreateWindowExW(kind.extendedStyle, kind.windowClass, L"", WS_CHILD | WS_VISIBLE | kind.style, 0, 0, 0, 0,
                        window_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    if (part.window == nullptr)
        throw Error{errors::cannotCreateObject, "The system has no control for " + std::string{name} + ".",
                    form_->Name};
    SendMessageW(part.window, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
    const HWND made = part.window;
    names_.emplace(id, name);
    parts_.emplace(name, std::move(part));
    std::make_shared<ShellControl>(*this, name)->Parent(form_);
    return made;
}

void WindowShell::addButton(std::string_view name, std::string_view text)
{
    addControl(name, {L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP});
    find(name).isButton = true;
    controlText(name, text);
}

void WindowShell::defaultButton(std::string_view name)
{
    const HWND button = control(name);
    SendMessageW(window_, DM_SETDEFID, static_cast<WPARAM>(GetDlgCtrlID(button)), 0);
    SendMessageW(button, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
}

const WindowShell::Part& WindowShell::find(std::string_view name) const
{
    const auto found = parts_.find(name);
    if (found == parts_.end())
        throw Error{errors::invalidArgument, "The dialog has no control \"" + std::string{name} + "\".", form_->Name};
    return found->second;
}

WindowShell::Part& WindowShell::find(std::string_view name)
{
    return const_cast<Part&>(std::as_const(*this).find(name));
}

void WindowShell::tellLater()
{
    PostMessageW(window_, laterMessage, 0, 0);
}

std::string_view WindowShell::nameOf(int id) const noexcept
{
    const auto found = names_.find(id);
    return found == names_.end() ? std::string_view{} : std::string_view{found->second};
}

// ---- sizes, places and texts ---------------------------------------------------------------------------------------

int WindowShell::pixels(float twips) const noexcept
{
    return static_cast<int>(std::lround(twips * static_cast<float>(dotsPerInch_) / twipsPerInch));
}

float WindowShell::twips(int pixels) const noexcept
{
    return static_cast<float>(pixels) * twipsPerInch / static_cast<float>(dotsPerInch_);
}

dialogs::Size WindowShell::innerSize() const
{
    RECT client{};
    GetClientRect(window_, &client);
    return {std::max(twips(client.right) - 2 * margin, 0.0F), std::max(twips(client.bottom) - 2 * margin, 0.0F)};
}

dialogs::Size WindowShell::outerSize() const
{
    const dialogs::Size inner = innerSize();
    const dialogs::Size outer{inner.width + borders.width, inner.height + borders.height};
    // The presenter's own numbers are finer than pixels.
    const bool isAsGiven =
        std::abs(outer.width - size_.width) < twips(2) && std::abs(outer.height - size_.height) < twips(2);
    return isAsGiven ? size_ : outer;
}

void WindowShell::outerSize(const dialogs::Size& size)
{
    const bool former = std::exchange(resizing_, true);
    size_ = size;
    RECT room{0, 0, std::max(pixels(size.width - borders.width + 2 * margin), 1),
              std::max(pixels(size.height - borders.height + 2 * margin), 1)};
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE));
    AdjustWindowRectEx(&room, style, FALSE, static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_EXSTYLE)));
    SetWindowPos(window_, nullptr, 0, 0, room.right - room.left, room.bottom - room.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    resizing_ = former;
}

void WindowShell::caption(std::string_view text)
{
    SetWindowTextW(window_, toWide(text).c_str());
}

std::string WindowShell::caption() const
{
    return textOf(window_);
}

std::string WindowShell::controlText(std::string_view name) const
{
    return textOf(control(name));
}

void WindowShell::controlText(std::string_view name, std::string_view text)
{
    SetWindowTextW(control(name), toWide(text).c_str());
}

/// Where the places of a control begin, in pixels of the window.
POINT WindowShell::origin(const Part& part) const
{
    if (part.frame.empty()) return {pixels(margin), pixels(margin)};
    RECT frame{};
    GetWindowRect(control(part.frame), &frame);
    POINT corner{frame.left, frame.top};
    ScreenToClient(window_, &corner);
    return corner;
}

dialogs::Box WindowShell::place(std::string_view name) const
{
    const Part& part = find(name);
    if (part.placed) return part.box;
    RECT shown{};
    GetWindowRect(part.window, &shown);
    POINT corner{shown.left, shown.top};
    ScreenToClient(window_, &corner);
    const POINT from = origin(part);
    return {twips(corner.x - from.x), twips(corner.y - from.y), twips(shown.right - shown.left),
            twips(shown.bottom - shown.top)};
}

void WindowShell::place(std::string_view name, const dialogs::Box& box)
{
    Part& part = find(name);
    part.box = box;
    part.placed = true;
    const POINT from = origin(part);
    const float width = part.isButton ? box.width - buttonGap_ : box.width;
    SetWindowPos(part.window, nullptr, from.x + pixels(box.left), from.y + pixels(box.top),
                 std::max(pixels(width), 0), std::max(pixels(box.height), 0), SWP_NOZORDER | SWP_NOACTIVATE);
}

void WindowShell::visible(std::string_view name, bool visible)
{
    ShowWindow(control(name), visible ? SW_SHOWNA : SW_HIDE);
}

void WindowShell::enabled(std::string_view name, bool enabled)
{
    EnableWindow(control(name), enabled ? TRUE : FALSE);
}

void WindowShell::bringToFront(std::string_view name)
{
    SetWindowPos(control(name), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void WindowShell::focusControl(std::string_view name)
{
    const HWND window = control(name);
    const bool isHidden = (GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) == 0;
    if (isHidden || IsWindowEnabled(window) == 0)
        throw Error{errors::invalidArgument,
                    "Invalid procedure call: the control " + std::string{name} +
                        " is hidden or disabled and cannot have the focus.",
                    form_->Name};
    SetFocus(window);
}

// ---- the life of the window ----------------------------------------------------------------------------------------

void WindowShell::runModal(dialogs::DialogEvents& events)
{
    events_ = &events;
    deliver([&] { events.resized(); });
    if (!closing_) {
        isModal_ = true;
        const bool wasEnabled = owner_ != nullptr && EnableWindow(owner_, FALSE) == 0;
        appear();
        pump();
        // The owner is enabled first: the system then gives it the focus back.
        if (wasEnabled) EnableWindow(owner_, TRUE);
        ShowWindow(window_, SW_HIDE);
        isModal_ = false;
    }
    events_ = nullptr;
    closing_ = true;
    if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
}

void WindowShell::appear()
{
    RECT room{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &room, 0);
    RECT own{};
    GetWindowRect(window_, &own);
    const auto middle = [](LONG low, LONG high, LONG extent) { return std::max(low, low + (high - low - extent) / 2); };
    SetWindowPos(window_, HWND_TOP, middle(room.left, room.right, own.right - own.left),
                 middle(room.top, room.bottom, own.bottom - own.top), 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
    ShowWindow(window_, SW_SHOW);
    SetForegroundWindow(window_);
    const HWND focused = GetFocus();
    if (focused == nullptr || IsChild(window_, focused) == 0) SetFocus(GetNextDlgTabItem(window_, nullptr, FALSE));
}

/// Runs until the window closes. The end of the program is passed on to its own loop.
void WindowShell::pump()
{
    MSG message{};
    while (!closing_) {
        const BOOL got = GetMessageW(&message, nullptr, 0, 0);
        if (got <= 0) {
            if (got == 0) PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        dispatch(message);
    }
}

void WindowShell::dispatch(MSG& message)
{
    if (filter && IsChild(window_, message.hwnd) != 0 && filter(message)) return;
    if (IsDialogMessageW(window_, &message) != 0) return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void WindowShell::handleWaiting()
{
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        dispatch(message);
    }
}

void WindowShell::showBeside()
{
    RECT room{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &room, 0);
    RECT own{};
    GetWindowRect(window_, &own);
    SetWindowPos(window_, HWND_TOP, (room.left + room.right - own.right + own.left) / 2,
                 (room.top + room.bottom - own.bottom + own.top) / 2, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
    ShowWindow(window_, SW_SHOWNA);
    drawNow();
}

void WindowShell::drawNow() const noexcept
{
    RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void WindowShell::finish()
{
    closing_ = true;
    if (!isModal_) ShowWindow(window_, SW_HIDE);
    // Wakes the loop, which looks for the end between two messages.
    PostMessageW(window_, WM_NULL, 0, 0);
}

/// The window is not hidden before the outermost event has ended: an event may show further dialogs, and closes its
/// window in the middle of its work.
void WindowShell::deliver(const std::function<void()>& event)
{
    if (events_ == nullptr || closing_) return;
    ++depth_;
    try {
        event();
        if (afterEvent) afterEvent();
    } catch (...) {
        failure_ = std::current_exception();
        finish();
    }
    --depth_;
}

// ---- what the user does --------------------------------------------------------------------------------------------

INT_PTR CALLBACK WindowShell::handle(HWND window, UINT message, WPARAM first, LPARAM second) noexcept
{
    auto* const shell = reinterpret_cast<WindowShell*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (shell == nullptr) return FALSE;
    try {
        return shell->answer(message, first, second);
    } catch (...) {
        // What is thrown outside an event of the presenter ends the dialog in the same way.
        shell->failure_ = std::current_exception();
        shell->finish();
        return FALSE;
    }
}

INT_PTR WindowShell::answer(UINT message, WPARAM first, LPARAM second)
{
    switch (message) {
    case WM_COMMAND: command(LOWORD(first), HIWORD(first)); return TRUE;
    case WM_CLOSE: deliver([&] { events_->closeAsked(); }); return TRUE;
    case WM_SIZE:
        if (!resizing_ && isModal_) deliver([&] { events_->resized(); });
        return TRUE;
    case WM_ACTIVATE:
        if (LOWORD(first) != WA_INACTIVE && isModal_ && depth_ == 0 && activated) activated();
        return FALSE; // the system sets the focus
    case WM_NOTIFY:
        if (!notified) return FALSE;
        SetWindowLongPtrW(window_, DWLP_MSGRESULT,
                          static_cast<LONG_PTR>(notified(*reinterpret_cast<const NMHDR*>(second))));
        return TRUE;
    case laterMessage:
        if (later) later();
        return TRUE;
    default: return FALSE;
    }
}

void WindowShell::command(WORD id, WORD code)
{
    if (id == IDCANCEL) {
        const bool hasButton =
            !escapeButton_.empty() && (GetWindowLongPtrW(control(escapeButton_), GWL_STYLE) & WS_VISIBLE) != 0;
        return hasButton ? press(escapeButton_) : deliver([&] { events_->closeAsked(); });
    }
    const std::string_view name = nameOf(id);
    if (name.empty()) return;
    const bool isButton = find(name).isButton;
    if (isButton && code == BN_CLICKED) press(name);
    if (!isButton && code == EN_SETFOCUS && entered) entered(name);
}

void WindowShell::press(std::string_view button)
{
    if (IsWindowEnabled(control(button)) != 0) deliver([&] { events_->clicked(button); });
}

} // namespace tamarok::com
