#include <algorithm>
#include <array>

#include "native_windows.h"
#include "wide_text.h"
#include "window_shell.h"

namespace tamarok::com {

namespace {

constexpr std::array<std::string_view, 5> buttons{"cmdYes", "cmdYesAll", "cmdNo", "cmdNoAll", "cmdExit"};
constexpr float belowText = 300; ///< twips, to the buttons
constexpr dialogs::Size button{1395, 390};
constexpr dialogs::Size firstSize{3000, 1500};

/// The presenter makes the window as wide as the text or the buttons need. The window gives the label the size of its
/// text, wrapped where it is wider than most of the screen.
class QuestionDialog final : public Modal<dialogs::QuestionWindow> {
public:
    QuestionDialog() : Modal{"F_MessageBox_All"}
    {
        shell().outerSize(firstSize);
        shell().buttonGap(120);
        shell().addControl("lblText", {L"STATIC", SS_LEFT | SS_NOPREFIX});
        for (const std::string_view name : buttons) {
            shell().addButton(name, {});
            Modal::place(name, {0, 0, button.width, button.height});
        }
        fitText();
    }

    using Modal::text;
    void text(std::string_view control, std::string_view text) override
    {
        Modal::text(control, text);
        if (control == "lblText") fitText();
    }

private:
    void fitText()
    {
        const HWND label = shell().control("lblText");
        const std::wstring content = toWide(shell().controlText("lblText"));
        RECT extent{0, 0, GetSystemMetrics(SM_CXSCREEN) * 2 / 3, 0};
        const HDC canvas = GetDC(label);
        const HGDIOBJ former = SelectObject(canvas, reinterpret_cast<HGDIOBJ>(SendMessageW(label, WM_GETFONT, 0, 0)));
        DrawTextW(canvas, content.empty() ? L" " : content.c_str(), -1, &extent,
                  DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
        SelectObject(canvas, former);
        ReleaseDC(label, canvas);
        const float height = shell().twips(extent.bottom);
        Modal::place("lblText", {0, 0, shell().twips(extent.right + 2), height});
        for (const std::string_view name : buttons) {
            dialogs::Box box = Modal::place(name);
            box.top = height + belowText;
            Modal::place(name, box);
        }
        const dialogs::Size outer = shell().outerSize();
        const float bordersHeight = outer.height - shell().innerSize().height;
        shell().outerSize({outer.width, height + belowText + button.height + bordersHeight});
    }
};

} // namespace

std::unique_ptr<dialogs::QuestionWindow> makeQuestionWindow()
{
    return std::make_unique<QuestionDialog>();
}

} // namespace tamarok::com
