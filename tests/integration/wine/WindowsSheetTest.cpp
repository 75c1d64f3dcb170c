// The system's property sheet, with pages of the test's own in place of those that the task service has.
#include "WineTaskService.h"

#include <Zelmar01/tasks/service/WindowsPage.h>
#include <Zelmar01/tasks/service/WindowsTaskService.h>

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>

using namespace Zelmar01;

namespace {

constexpr int apply = 0x3021;

// What the user does, and what came of it.
struct TUser
{
    std::vector<int> Buttons; ///< of the sheet, pressed in this order
    std::u16string Title;
    bool HasApply = false, ParentEnabled = false, HasIcon = false;
    std::vector<std::string> Events;
    HWND Parent = nullptr;
};

INT_PTR CALLBACK pageProcedure(HWND page, UINT message, WPARAM, LPARAM lParam)
{
    const auto sheet = GetParent(page);
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(page, GWLP_USERDATA, reinterpret_cast<const PROPSHEETPAGEW *>(lParam)->lParam);
        SetTimer(page, 1, 10, nullptr);
        return TRUE;
    }
    auto *const user = reinterpret_cast<TUser *>(GetWindowLongPtrW(page, GWLP_USERDATA));
    if (message == WM_NOTIFY && reinterpret_cast<const NMHDR *>(lParam)->code == static_cast<UINT>(PSN_APPLY))
        user->Events.push_back("saved");
    if (message == WM_TIMER) {
        KillTimer(page, 1);
        std::array<wchar_t, 200> title{};
        GetWindowTextW(sheet, title.data(), static_cast<int>(title.size()));
        user->Title = reinterpret_cast<const char16_t *>(title.data());
        user->HasApply = (GetWindowLongW(GetDlgItem(sheet, apply), GWL_STYLE) & WS_VISIBLE) != 0;
        user->HasIcon = SendMessageW(sheet, WM_GETICON, ICON_SMALL, 0) != 0;
        user->ParentEnabled = IsWindowEnabled(user->Parent);
        for (const int button : user->Buttons) {
            SendMessageW(sheet, PSM_CHANGED, reinterpret_cast<WPARAM>(page), 0);
            SendMessageW(GetDlgItem(sheet, button), BM_CLICK, 0, 0);
        }
    }
    return FALSE;
}

std::shared_ptr<WindowsPage> pageFor(TUser &user)
{
    static const DLGTEMPLATE dialog[2] = {{WS_CHILD | DS_CONTROL, 0, 0, 0, 0, 100, 50}, {}};
    PROPSHEETPAGEW page = {};
    page.dwSize = sizeof page;
    page.dwFlags = PSP_DLGINDIRECT | PSP_USETITLE;
    page.pResource = dialog;
    page.pszTitle = L"Page";
    page.pfnDlgProc = pageProcedure;
    page.lParam = reinterpret_cast<LPARAM>(&user);
    return std::make_shared<WindowsPage>(nullptr, CreatePropertySheetPageW(&page));
}

class WindowsSheet : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!IsPreparedMachine())
            GTEST_SKIP() << "to be run by run_under_wine.py";
        m_parent =
            CreateWindowW(L"STATIC", L"", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
        ASSERT_NE(m_parent, nullptr);
        m_user.Parent = m_parent;
    }

    std::intptr_t show(std::uint32_t flags, std::vector<int> buttons)
    {
        m_user.Buttons = std::move(buttons);
        m_sheet.Flags = SheetFlag::UseCallback | flags;
        m_sheet.Parent = reinterpret_cast<std::uintptr_t>(m_parent);
        m_sheet.Caption = u"Export de nuit \u6771";
        m_sheet.Pages = {pageFor(m_user)};
        return m_service.ShowSheet(m_sheet);
    }

    HWND m_parent = nullptr;
    TUser m_user;
    TPropertySheet m_sheet;
    WindowsTaskService m_service;
};

} // namespace

TEST_F(WindowsSheet, TellsHowItWasClosed)
{
    EXPECT_GT(show(0, {IDOK}), 0);
    EXPECT_EQ(m_user.Events, std::vector<std::string>{"saved"});
    EXPECT_EQ(m_user.Title, m_sheet.Caption);
    EXPECT_TRUE(m_user.HasApply);
    EXPECT_FALSE(m_user.ParentEnabled);
    EXPECT_TRUE(IsWindowEnabled(m_parent));

    EXPECT_EQ(show(SheetFlag::NoApplyNow | SheetFlag::PropTitle | SheetFlag::UseIcon, {IDCANCEL}), 0);
    EXPECT_NE(m_user.Title.find(m_sheet.Caption), std::u16string::npos);
    EXPECT_NE(m_user.Title, m_sheet.Caption);
    EXPECT_FALSE(m_user.HasApply);
    EXPECT_TRUE(m_user.HasIcon);
}

TEST_F(WindowsSheet, TellsOfApplyAfterThePagesHaveSaved)
{
    m_sheet.Applied = [this] { m_user.Events.push_back("applied"); };
    show(0, {apply, apply, IDCANCEL});
    EXPECT_EQ(m_user.Events, (std::vector<std::string>{"saved", "applied", "saved", "applied"}));

    m_sheet.Applied = [] { throw std::runtime_error("of the host"); };
    EXPECT_THROW(show(0, {apply, IDCANCEL}), std::runtime_error);
    EXPECT_TRUE(IsWindowEnabled(m_parent));
}

TEST_F(WindowsSheet, ShowsNoPageTwiceAndNoneOfOthers)
{
    EXPECT_EQ(show(0, {IDCANCEL}), 0);
    EXPECT_LT(m_service.ShowSheet(m_sheet), 0);
    m_sheet.Pages.clear();
    EXPECT_LT(m_service.ShowSheet(m_sheet), 0);
    m_sheet.Pages = {pageFor(m_user), std::make_shared<ITaskPage>()};
    EXPECT_LT(m_service.ShowSheet(m_sheet), 0);
}
