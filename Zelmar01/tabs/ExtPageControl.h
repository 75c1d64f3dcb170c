#pragma once

#include <Zelmar01/core/Pages.h>
#include <Zelmar01/tabs/ExtCustomTab.h>
#include <Zelmar01/tabs/TabErrors.h>
#include <Zelmar01/tabs/TabSheet.h>

#include <vector>

namespace Zelmar01 {

/// A tab control whose tabs are pages.
///
/// The first page becomes the active one; from then on the active page is what user and host make it. None
/// may be active, and a disabled page may be: it stays so when it is disabled later. When the active page
/// goes, or its tab is hidden, the next enabled page takes its place without any event; where there was no
/// such page yet, the first enabled tab is selected when the control is loaded.
///
///     TExtPageControl pages;
///     auto *sale = new TTabSheet(&pages);
///     sale->setCaption("&Vente");
class TExtPageControl : public TExtCustomTab, public IPages
{
    Q_OBJECT
    Q_PROPERTY(QString ActivePage READ activePageName WRITE setActivePage)
    Q_PROPERTY(
        int ActivePageIndex READ ActivePageIndex WRITE SetActivePageIndex DESIGNABLE false STORED false)
    Q_PROPERTY(int InitialPage READ InitialPage WRITE setInitialPage RESET resetInitialPage)
public:
    explicit TExtPageControl(QWidget *parent = nullptr);
    ~TExtPageControl() override;

    void Loaded() override;

    // Pages. The control owns them. A container extension of a form designer stands on PageCount(), Pages(),
    // ActivePageIndex(), SetActivePageIndex(), AddPage(), InsertPage() and RemovePage(); at design time every
    // page has a tab and any page can be made the active one.

    int PageCount() const { return static_cast<int>(m_pages.size()); }
    /// Null for an index that there is not.
    TTabSheet *Pages(int index) const;
    int IndexOf(const TTabSheet *page) const;
    /// Adds a page, or moves one that is there already.
    void AddPage(TTabSheet *page) { InsertPage(PageCount(), page); }
    /// Before the page that has the index now, at the end for one beyond the pages.
    void InsertPage(int index, TTabSheet *page);
    /// The writer of forms, which know pages as widgets. Raises EInvalidOperation for another class.
    Q_INVOKABLE void addPage(QWidget *page);
    void MovePage(int from, int to);
    /// Takes a page out; the caller owns it from then on, and deletes it or shows it elsewhere.
    void RemovePage(TTabSheet *page);

    /// The page of a tab. Raises EExtPageInvalidCall for a tab that no page has, and for every negative one.
    int GetPageIndexByTabIndex(int tabIndex) const;

    // The active page.

    TTabSheet *ActivePage() const { return m_activePage; }
    int ActivePageIndex() const { return IndexOf(m_activePage); }
    /// Null deselects, without any question. A disabled page is refused; so is any other page when OnChanging
    /// says so. OnChange tells of the change, unless showing and hiding of pages has led to another one.
    void SetActivePage(TTabSheet *page);
    void SetActivePageIndex(int index) { SetActivePage(Pages(index)); }
    void ShowPage(QWidget &page) override
    {
        if (auto *sheet = qobject_cast<TTabSheet *>(&page))
            SetActivePage(sheet);
    }
    /// The writer of forms: the page's object name, empty for none. While the control is loading the page may
    /// come later, and nothing is asked; a page that is disabled in the end is refused all the same.
    void setActivePage(const QString &name);

    /// The page that is active when the control is loaded, disabled or not; -1, as at first, for none in
    /// particular.
    int InitialPage() const { return m_initialPage; }
    void setInitialPage(int index) { m_initialPage = index; }

    /// Activates the next enabled page, also one whose tab is hidden.
    void SelectNextEnabledPage(bool goForward, bool wrap);

    /// Frees the native windows of all pages but the active one; pages and contents stay.
    virtual void DestroyAllOtherSheetHandles();
    /// Gives the pages their place again when the control is visible, or at once when forced.
    virtual void ReAlignTabSheets(bool force);

    int TabCount() const override { return static_cast<int>(m_tabs.size()); }
    QString TabCaption(int tab) const override;
    bool IsTabEnabled(int tab) const override;
    void SelectTab(int tab) override;

protected:
    int indexOfTab(int tab) const override { return GetPageIndexByTabIndex(tab); }
    QString captionOf(int index) const override;
    QWidget *helpItem(int tab) const override;
    void realign() override;
    QSize pageSizeHint(bool minimum) const override;

private:
    friend class TTabSheet;
    QString activePageName() const;
    void resetInitialPage() { setInitialPage(-1); }
    void pageChanged(const TTabSheet *page);
    void updateTabs();
    void activate(TTabSheet *page);
    void moveFocusFrom(const QWidget &page);
    TTabSheet *pageNamed(const QString &name) const;
    TTabSheet *tabAt(int tab) const;
    TTabSheet *successorOf(int tab) const;

    std::vector<TTabSheet *> m_pages, m_tabs;
    TTabSheet *m_activePage = nullptr;
    int m_initialPage = -1;
    std::optional<QString> m_wantedPage; // while loading
};

/// A page control in which the Tag of a page chooses its glyph.
class TExtPageControlTag : public TExtPageControl
{
    Q_OBJECT
public:
    using TExtPageControl::TExtPageControl;

    int GetGlyphIndex(int index) const override;
};

} // namespace Zelmar01
