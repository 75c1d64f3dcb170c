#include <Zelmar01/tabs/ExtTabControl.h>

#include <QLayout>

namespace Zelmar01 {

TExtTabControl::TExtTabControl(QWidget *parent) : TExtCustomTab(parent) {}

void TExtTabControl::Loaded()
{
    if (!IsLoading())
        return;
    TExtCustomTab::Loaded();
    if (const auto wanted = std::exchange(m_wantedTab, {}))
        showSelected(qBound(-1, *wanted, TabCount() - 1) == *wanted ? *wanted : TabIndex());
    if (m_initialTab >= 0 && m_initialTab < TabCount() && !IsDesigning())
        showSelected(m_initialTab);
}

void TExtTabControl::setTabs(const QStringList &tabs)
{
    if (tabs == m_tabs)
        return;
    int selected = TabIndex();
    if (m_tabs.isEmpty())
        selected = 0;
    m_tabs = tabs;
    tabsChanged(selected < TabCount() ? selected : -1);
}

void TExtTabControl::InsertTab(int index, const QString &caption)
{
    const bool first = m_tabs.isEmpty();
    index = qBound(0, index, TabCount());
    int selected = TabIndex();
    if (first)
        selected = 0;
    else if (selected >= index)
        ++selected;
    m_tabs.insert(index, caption);
    tabsChanged(selected);
}

void TExtTabControl::DeleteTab(int index)
{
    if (index < 0 || index >= TabCount())
        return;
    int selected = TabIndex();
    if (selected == index)
        selected = -1;
    else if (selected > index)
        --selected;
    m_tabs.removeAt(index);
    tabsChanged(selected);
}

void TExtTabControl::SetTab(int index, const QString &caption)
{
    if (index < 0 || index >= TabCount() || m_tabs[index] == caption)
        return;
    m_tabs[index] = caption;
    tabChanged(index);
}

void TExtTabControl::SetTabEnabled(int index, bool enabled)
{
    const bool changed = enabled ? m_disabled.erase(index) > 0 : m_disabled.insert(index).second;
    if (changed && index >= 0 && index < TabCount())
        tabChanged(index);
}

void TExtTabControl::SetTabIndex(int index)
{
    endLoading();
    if (index == TabIndex() || index < -1 || index >= TabCount() || (!GetTabEnabled(index) && !IsDesigning()))
        return;
    const QPointer<TExtTabControl> self = this;
    const int count = TabCount();
    const auto caption = TabCaption(index);
    // Whoever was asked may have put another tab into that place.
    if (!canChange() || !self || index == TabIndex() || count != TabCount() || caption != TabCaption(index) ||
        (!GetTabEnabled(index) && !IsDesigning()))
        return;
    showSelected(index);
    emit OnChange(this);
}

void TExtTabControl::setTabIndex(int index)
{
    if (IsLoading())
        m_wantedTab = index;
    else
        SetTabIndex(index);
}

QSize TExtTabControl::pageSizeHint(bool minimum) const
{
    const auto least = minimum ? LeastPage : UsualPage;
    if (!layout())
        return least;
    const auto wanted = minimum ? layout()->totalMinimumSize() : layout()->totalSizeHint();
    const auto margins = contentsMargins();
    return (wanted - QSize(margins.left() + margins.right(), margins.top() + margins.bottom()))
        .expandedTo(least);
}

} // namespace Zelmar01
