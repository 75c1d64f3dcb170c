#pragma once

#include <Zelmar01/tabs/ExtCustomTab.h>

#include <set>

namespace Zelmar01 {

/// A tab control whose tabs are lines of text. A layout that is set on it lays out the page area.
///
/// Which tabs are disabled is a list of positions: it stays as it is when tabs are inserted or deleted, and
/// may name tabs that do not exist yet.
class TExtTabControl : public TExtCustomTab
{
    Q_OBJECT
    Q_PROPERTY(QStringList Tabs READ Tabs WRITE setTabs)
    Q_PROPERTY(int InitialTab READ InitialTab WRITE setInitialTab RESET resetInitialTab)
    Q_PROPERTY(int TabIndex READ wantedTabIndex WRITE setTabIndex)
public:
    explicit TExtTabControl(QWidget *parent = nullptr);

    void Loaded() override;

    /// The captions. The first one that comes is selected; a selection beyond the new lines is none.
    const QStringList &Tabs() const { return m_tabs; }
    void setTabs(const QStringList &tabs);
    /// The selection stays with its tab; when that is deleted, none is selected. An index beyond the tabs
    /// inserts at the end, and neither deletes nor sets anything.
    void InsertTab(int index, const QString &caption);
    void DeleteTab(int index);
    void SetTab(int index, const QString &caption);

    /// Whether the tab at a position is enabled.
    bool TabEnabled(int index) const { return GetTabEnabled(index); }
    bool GetTabEnabled(int index) const { return m_disabled.count(index) == 0; }
    void SetTabEnabled(int index, bool enabled);

    int GetTabIndex() const { return TabIndex(); }
    /// Selects a tab, -1 for none. Beyond the last tab, below -1, for a disabled tab and when OnChanging says
    /// so, nothing happens. OnChange tells of the change.
    void SetTabIndex(int index);
    /// The writer of forms: while the control is loading the tabs may come later, and nothing is asked.
    void setTabIndex(int index);

    /// The tab that is selected when the control is loaded, disabled or not; -1, as at first, for none in
    /// particular.
    int InitialTab() const { return m_initialTab; }
    void setInitialTab(int index) { m_initialTab = index; }

    int TabCount() const override { return static_cast<int>(m_tabs.size()); }
    QString TabCaption(int tab) const override { return m_tabs.value(tab); }
    bool IsTabEnabled(int tab) const override { return GetTabEnabled(tab); }
    void SelectTab(int tab) override { SetTabIndex(tab); }

protected:
    int indexOfTab(int tab) const override { return tab; }
    QString captionOf(int index) const override { return TabCaption(index); }
    QWidget *helpItem(int) const override { return nullptr; }
    void realign() override {}
    QSize pageSizeHint(bool minimum) const override;

private:
    int wantedTabIndex() const { return m_wantedTab.value_or(TabIndex()); }
    void resetInitialTab() { setInitialTab(-1); }

    QStringList m_tabs;
    std::set<int> m_disabled;
    int m_initialTab = -1;
    std::optional<int> m_wantedTab; // while loading
};

} // namespace Zelmar01
