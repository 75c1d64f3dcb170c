#include <Zelmar01/tabs/ExtPageControl.h>

#include <Zelmar01/tabs/QtRect.h>

#include <QApplication>

#include <algorithm>

namespace Zelmar01 {

namespace {

QString nameWithoutNamespace(const QObject *object)
{
    return QString::fromLatin1(object->metaObject()->className()).section(QLatin1String("::"), -1);
}

// The first widget in a page that Tab would reach.
QWidget *firstToFocus(QWidget *page)
{
    for (auto *widget = page->nextInFocusChain(); widget && widget != page;
         widget = widget->nextInFocusChain()) {
        if (page->isAncestorOf(widget) && (widget->focusPolicy() & Qt::TabFocus) &&
            widget->isVisibleTo(page) && widget->isEnabled())
            return widget;
    }
    return nullptr;
}

} // namespace

TExtPageControl::TExtPageControl(QWidget *parent) : TExtCustomTab(parent) {}

TExtPageControl::~TExtPageControl()
{
    for (auto *page : m_pages)
        page->m_pageControl = nullptr;
}

void TExtPageControl::Loaded()
{
    if (!IsLoading())
        return;
    TExtCustomTab::Loaded();
    if (auto *first = TabIndex() < 0 ? successorOf(0) : nullptr)
        activate(first);
    if (const auto name = std::exchange(m_wantedPage, {})) {
        auto *wanted = pageNamed(*name);
        if (wanted ? wanted->Enabled() || IsDesigning() : name->isEmpty())
            activate(wanted);
    }
    if (m_initialPage >= 0 && !IsDesigning()) {
        if (m_initialPage >= PageCount())
            throw EStringListError(m_initialPage);
        activate(Pages(m_initialPage));
    }
}

TTabSheet *TExtPageControl::pageNamed(const QString &name) const
{
    const auto found = std::find_if(m_pages.begin(), m_pages.end(),
                                    [&](const TTabSheet *page) { return page->objectName() == name; });
    return found == m_pages.end() ? nullptr : *found;
}

TTabSheet *TExtPageControl::Pages(int index) const
{
    return index < 0 || index >= PageCount() ? nullptr : m_pages[static_cast<std::size_t>(index)];
}

TTabSheet *TExtPageControl::tabAt(int tab) const
{
    return tab < 0 || tab >= TabCount() ? nullptr : m_tabs[static_cast<std::size_t>(tab)];
}

int TExtPageControl::IndexOf(const TTabSheet *page) const
{
    const auto found = std::find(m_pages.begin(), m_pages.end(), page);
    return found == m_pages.end() ? -1 : static_cast<int>(found - m_pages.begin());
}

void TExtPageControl::InsertPage(int index, TTabSheet *page)
{
    if (!page)
        return;
    if (const int now = IndexOf(page); now >= 0) {
        MovePage(now, index);
        return;
    }
    if (page->m_pageControl)
        page->m_pageControl->RemovePage(page);
    page->setParent(this);
    page->m_pageControl = this;
    page->hide();
    m_pages.insert(m_pages.begin() + qBound(0, index, PageCount()), page);
    updateTabs();
    if (PageCount() == 1)
        activate(page);
    else
        ReAlignTabSheets(false);
}

void TExtPageControl::addPage(QWidget *page)
{
    auto *sheet = qobject_cast<TTabSheet *>(page);
    if (!sheet)
        throw EInvalidOperation(tr("Une page d'un TExtPageControl doit être un TTabSheet").toStdString());
    AddPage(sheet);
}

void TExtPageControl::MovePage(int from, int to)
{
    auto *page = Pages(from);
    if (!page)
        return;
    m_pages.erase(m_pages.begin() + from);
    m_pages.insert(m_pages.begin() + qBound(0, to, PageCount()), page);
    updateTabs();
}

// Called by the destructor of a page, too.
void TExtPageControl::RemovePage(TTabSheet *page)
{
    const int index = IndexOf(page);
    if (index < 0)
        return;
    const int tab = page->m_tabIndex;
    m_pages.erase(m_pages.begin() + index);
    page->m_pageControl = nullptr;
    page->m_tabIndex = -1;
    const bool wasActive = page == m_activePage;
    if (wasActive)
        m_activePage = nullptr;
    updateTabs();
    const QPointer<TExtPageControl> self = this;
    const QPointer<TTabSheet> going = page;
    if (wasActive)
        activate(successorOf(tab));
    if (self && going)
        moveFocusFrom(*going);
    if (self && going && going->parent() == this)
        going->hide();
}

// The enabled page that takes the place of a tab that has gone: the next one, else the one before it.
TTabSheet *TExtPageControl::successorOf(int tab) const
{
    const int from = qMax(tab, 0);
    for (int next = from; next < TabCount(); ++next) {
        if (IsTabEnabled(next))
            return tabAt(next);
    }
    for (int before = qMin(from, TabCount()) - 1; before >= 0; --before) {
        if (IsTabEnabled(before))
            return tabAt(before);
    }
    return nullptr;
}

int TExtPageControl::GetPageIndexByTabIndex(int tabIndex) const
{
    if (tabIndex >= 0) {
        for (int page = tabIndex; page < PageCount(); ++page) {
            if (Pages(page)->TabIndex() == tabIndex)
                return page;
        }
    }
    throw EExtPageInvalidCall(
        tr("Function GetPageIndexByTabIndex of component %1 of class %2 was called with an invalid parameter "
           "(CurrentTabIndex = %3).")
            .arg(objectName(), nameWithoutNamespace(this), QString::number(tabIndex))
            .toStdString());
}

void TExtPageControl::SetActivePage(TTabSheet *page)
{
    endLoading();
    if (!page) {
        activate(nullptr);
        return;
    }
    if (page == m_activePage || IndexOf(page) < 0 || (!page->Enabled() && !IsDesigning()))
        return;
    const QPointer<TExtPageControl> self = this;
    if (!canChange() || !self || page == m_activePage || IndexOf(page) < 0 ||
        (!page->Enabled() && !IsDesigning()))
        return;
    activate(page);
    if (!self || page != m_activePage)
        return;
    ReAlignTabSheets(false);
    emit OnChange(this);
}

void TExtPageControl::setActivePage(const QString &name)
{
    if (IsLoading()) {
        m_wantedPage = name;
        return;
    }
    auto *page = pageNamed(name);
    if (page || name.isEmpty())
        SetActivePage(page);
}

QString TExtPageControl::activePageName() const
{
    return m_wantedPage ? *m_wantedPage : m_activePage ? m_activePage->objectName() : QString();
}

// Showing, hiding and moving the focus run code of the host, which may activate another page or delete one:
// the last one that is activated stays, and all others are hidden.
void TExtPageControl::activate(TTabSheet *page)
{
    const QPointer<TExtPageControl> self = this;
    const auto isLast = [&] { return self && page == m_activePage; };
    m_activePage = page;
    showSelected(page ? page->TabIndex() : -1);
    realign();
    if (isLast() && page)
        page->show();
    const std::vector<QPointer<TTabSheet>> pages(m_pages.begin(), m_pages.end());
    for (const auto &other : pages) {
        if (isLast() && other && other != page && !other->isHidden())
            moveFocusFrom(*other);
        if (isLast() && other && other != page && other->m_pageControl == this)
            other->hide();
    }
}

// Left alone, Qt would look for another widget anywhere on the form.
void TExtPageControl::moveFocusFrom(const QWidget &page)
{
    const auto *focused = QApplication::focusWidget();
    if (!focused || (focused != &page && !page.isAncestorOf(focused)))
        return;
    auto *next = m_activePage ? firstToFocus(m_activePage) : nullptr;
    (next ? next : this)->setFocus(Qt::OtherFocusReason);
}

void TExtPageControl::SelectNextEnabledPage(bool goForward, bool wrap)
{
    const int active = ActivePageIndex(), last = PageCount() - 1;
    const auto activateFirst = [&](int from, int to) {
        const int step = goForward ? 1 : -1;
        for (int index = from; goForward ? index <= to : index >= to; index += step) {
            if (Pages(index)->Enabled()) {
                SetActivePage(Pages(index));
                return true;
            }
        }
        return false;
    };
    if (goForward ? activateFirst(active + 1, last) : activateFirst(active - 1, 0))
        return;
    if (wrap)
        goForward ? activateFirst(0, active - 1) : activateFirst(last, active + 1);
}

void TExtPageControl::DestroyAllOtherSheetHandles()
{
    for (auto *page : m_pages) {
        if (page != m_activePage)
            page->DestroyHandle();
    }
}

void TExtPageControl::ReAlignTabSheets(bool force)
{
    if (!HandleAllocated() || !(force || isVisible()))
        return;
    const auto place = ToQRect(DisplayRect());
    for (auto *page : m_pages)
        page->setGeometry(place);
    Invalidate();
}

void TExtPageControl::realign()
{
    if (HandleAllocated())
        ReAlignTabSheets(!isVisible());
    else if (m_activePage)
        m_activePage->setGeometry(ToQRect(DisplayRect()));
}

void TExtPageControl::pageChanged(const TTabSheet *page)
{
    tabChanged(page->TabIndex());
}

void TExtPageControl::updateTabs()
{
    const auto hadTab = m_activePage ? m_activePage->m_tabIndex : -1;
    m_tabs.clear();
    const bool all = IsDesigning();
    for (auto *page : m_pages) {
        page->m_tabIndex = page->TabVisible() || all ? TabCount() : -1;
        if (page->m_tabIndex >= 0)
            m_tabs.push_back(page);
    }
    tabsChanged(m_activePage ? m_activePage->m_tabIndex : -1);
    // The active page's tab was hidden.
    if (hadTab >= 0 && m_activePage && m_activePage->m_tabIndex < 0)
        activate(successorOf(hadTab));
}

QString TExtPageControl::TabCaption(int tab) const
{
    const auto *page = tabAt(tab);
    return page ? page->Caption() : QString();
}

bool TExtPageControl::IsTabEnabled(int tab) const
{
    const auto *page = tabAt(tab);
    return page && page->Enabled();
}

void TExtPageControl::SelectTab(int tab)
{
    SetActivePage(Pages(GetPageIndexByTabIndex(tab)));
}

QString TExtPageControl::captionOf(int index) const
{
    const auto *page = Pages(index);
    return page ? page->Caption() : QString();
}

QWidget *TExtPageControl::helpItem(int tab) const
{
    return tabAt(tab);
}

QSize TExtPageControl::pageSizeHint(bool minimum) const
{
    auto size = minimum ? LeastPage : UsualPage;
    for (const auto *page : m_pages)
        size = size.expandedTo(minimum ? page->minimumSizeHint().expandedTo(page->minimumSize())
                                       : page->sizeHint());
    return size;
}

int TExtPageControlTag::GetGlyphIndex(int index) const
{
    const auto *page = Pages(index);
    return page ? page->Tag() : -1;
}

} // namespace Zelmar01
