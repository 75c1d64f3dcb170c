#include <Zelmar01/tasks/service/WindowsPage.h>

#include <algorithm>
#include <exception>
#include <utility>

namespace Zelmar01 {

namespace {

constexpr auto sheetProperty = L"Zelmar01.PropertySheet";
constexpr WORD applyButton = 0x3021;
constexpr std::intptr_t notShown = -1;
constexpr DWORD knownFlags = SheetFlag::PropTitle | SheetFlag::UseIcon | SheetFlag::NoApplyNow |
                             SheetFlag::UseCallback | SheetFlag::HasHelp | SheetFlag::NoContextHelp;
static_assert(SheetFlag::PropTitle == PSH_PROPTITLE && SheetFlag::UseIcon == PSH_USEHICON &&
              SheetFlag::NoApplyNow == PSH_NOAPPLYNOW && SheetFlag::UseCallback == PSH_USECALLBACK &&
              SheetFlag::HasHelp == PSH_HASHELP && SheetFlag::NoContextHelp == PSH_NOCONTEXTHELP);

// A sheet that is being shown.
struct TOpenSheet
{
    const std::function<void()> &Applied;
    WNDPROC Procedure = nullptr;
    std::exception_ptr Failure;
};

// The system tells the callback the window alone.
thread_local TOpenSheet *sheetToOpen = nullptr;

LRESULT CALLBACK sheetProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto &sheet = *static_cast<TOpenSheet *>(GetPropW(window, sheetProperty));
    const auto procedure = sheet.Procedure;
    if (message == WM_NCDESTROY)
        RemovePropW(window, sheetProperty);
    const auto result = CallWindowProcW(procedure, window, message, wParam, lParam);
    if (message == WM_COMMAND && LOWORD(wParam) == applyButton && sheet.Applied) {
        // Nothing may be thrown through the system's message loop.
        try {
            sheet.Applied();
        } catch (...) {
            sheet.Failure = std::current_exception();
        }
    }
    return result;
}

int CALLBACK sheetCallback(HWND window, UINT message, LPARAM)
{
    if (message == PSCB_INITIALIZED) {
        auto &sheet = *std::exchange(sheetToOpen, nullptr);
        SetPropW(window, sheetProperty, &sheet);
        sheet.Procedure = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(sheetProcedure)));
    }
    return 1;
}

// The icon of a window of the application is that of the application.
HICON applicationIcon(HWND window)
{
    auto *icon = reinterpret_cast<HICON>(window ? SendMessageW(window, WM_GETICON, ICON_SMALL, 0) : 0);
    if (!icon && window)
        icon = reinterpret_cast<HICON>(GetClassLongPtrW(window, GCLP_HICONSM));
    if (!icon && window)
        icon = reinterpret_cast<HICON>(GetClassLongPtrW(window, GCLP_HICON));
    return icon ? icon : LoadIcon(nullptr, IDI_APPLICATION);
}

} // namespace

WindowsPage::WindowsPage(std::shared_ptr<const void> job, HPROPSHEETPAGE page)
    : m_job(std::move(job)), m_page(page)
{
}

WindowsPage::~WindowsPage()
{
    if (m_page)
        DestroyPropertySheetPage(m_page);
}

HPROPSHEETPAGE WindowsPage::Take()
{
    return std::exchange(m_page, nullptr);
}

std::intptr_t ShowWindowsSheet(const TPropertySheet &sheet)
{
    std::vector<WindowsPage *> pages;
    for (const auto &page : sheet.Pages)
        pages.push_back(dynamic_cast<WindowsPage *>(page.get()));
    if (pages.empty() || !std::ranges::all_of(pages, [](auto *page) { return page && page->IsLeft(); }))
        return notShown;
    std::vector<HPROPSHEETPAGE> handles;
    for (auto *page : pages)
        handles.push_back(page->Take());

    PROPSHEETHEADERW header = {};
    header.dwSize = sizeof header;
    header.dwFlags = sheet.Flags & knownFlags;
    header.hwndParent = reinterpret_cast<HWND>(sheet.Parent);
    if (sheet.Flags & SheetFlag::UseIcon)
        header.hIcon = applicationIcon(header.hwndParent);
    header.pszCaption = reinterpret_cast<const wchar_t *>(sheet.Caption.c_str());
    header.nPages = static_cast<UINT>(handles.size());
    header.phpage = handles.data();
    header.pfnCallback = sheetCallback;

    TOpenSheet open{sheet.Applied, nullptr, nullptr};
    const auto before = std::exchange(sheetToOpen, &open);
    const auto result = PropertySheetW(&header);
    sheetToOpen = before;
    if (open.Failure)
        std::rethrow_exception(open.Failure);
    return result;
}

} // namespace Zelmar01
