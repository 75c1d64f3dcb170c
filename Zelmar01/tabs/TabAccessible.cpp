#include "TabAccessible.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/tabs/ExtCustomTab.h>
#include <Zelmar01/tabs/QtRect.h>
#include <Zelmar01/tabs/TabSheet.h>

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>

#include <vector>

namespace Zelmar01 {

namespace {

class TTabInterface : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    TTabInterface(TExtCustomTab *control, int tab) : m_control(control), m_tab(tab) {}

    bool isValid() const override { return m_control && m_tab < m_control->TabCount(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_control ? m_control->window()->windowHandle() : nullptr; }
    QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_control.data());
    }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::PageTab; }

    QString text(QAccessible::Text kind) const override
    {
        if (!isValid())
            return {};
        const auto caption = m_control->TabCaption(m_tab);
        if (kind == QAccessible::Name)
            return PlainCaption(caption);
        const auto key = AcceleratorOf(caption);
        if (kind == QAccessible::Accelerator && !key.isNull())
            return QKeySequence(Qt::ALT | Qt::Key(key.unicode())).toString(QKeySequence::NativeText);
        return {};
    }
    void setText(QAccessible::Text, const QString &) override {}

    QRect rect() const override
    {
        if (!isValid())
            return {};
        auto rect = ToQRect(m_control->Strip().DrawnItem(m_tab));
        rect.moveTopLeft(m_control->mapToGlobal(rect.topLeft()));
        return rect;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        const bool enabled = m_control->isEnabled() && m_control->IsTabEnabled(m_tab);
        const bool selected = m_tab == m_control->TabIndex();
        state.disabled = !enabled;
        state.selectable = enabled;
        state.selected = selected;
        state.focusable = enabled;
        state.focused = selected && m_control->hasFocus();
        state.hotTracked = m_tab == m_control->Hottrack()->HotTab;
        state.invisible = !m_control->isVisible();
        const auto place = ToQRect(m_control->Strip().Item(m_tab));
        state.offscreen = !m_control->rect().intersects(place);
        return state;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override { return {pressAction()}; }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }
    void doAction(const QString &action) override
    {
        if (action != pressAction())
            return;
        // Selecting may end the tab and this object with it.
        ShowingExceptions([control = m_control, tab = m_tab] {
            if (control && tab < control->TabCount() && control->isEnabled() && control->IsTabEnabled(tab))
                control->SelectTab(tab);
        });
    }

private:
    QPointer<TExtCustomTab> m_control;
    int m_tab;
};

class TControlInterface : public QAccessibleWidget
{
public:
    explicit TControlInterface(TExtCustomTab *control) : QAccessibleWidget(control, QAccessible::PageTabList)
    {
    }
    ~TControlInterface() override
    {
        for (const auto id : m_tabs)
            QAccessible::deleteAccessibleInterface(id);
    }

    int childCount() const override { return control()->TabCount() + static_cast<int>(widgets().size()); }

    QAccessibleInterface *child(int index) const override
    {
        const int tabs = control()->TabCount();
        if (index < 0)
            return nullptr;
        if (index >= tabs)
            return QAccessible::queryAccessibleInterface(widgets().value(index - tabs));
        while (static_cast<int>(m_tabs.size()) <= index)
            m_tabs.push_back(QAccessible::registerAccessibleInterface(
                new TTabInterface(control(), static_cast<int>(m_tabs.size()))));
        return QAccessible::accessibleInterface(m_tabs[static_cast<std::size_t>(index)]);
    }

    int indexOfChild(const QAccessibleInterface *child) const override
    {
        for (int tab = 0; tab < control()->TabCount(); ++tab) {
            if (this->child(tab) == child)
                return tab;
        }
        const auto index =
            child ? widgets().indexOf(qobject_cast<QWidget *>(child->object())) : qsizetype(-1);
        return index < 0 ? -1 : static_cast<int>(index) + control()->TabCount();
    }

    QAccessibleInterface *childAt(int x, int y) const override
    {
        const int tab = control()->GetTabNumber(FromQPoint(control()->mapFromGlobal(QPoint(x, y))));
        return tab >= 0 ? child(tab) : QAccessibleWidget::childAt(x, y);
    }

    QAccessibleInterface *focusChild() const override
    {
        return control()->hasFocus() && control()->TabIndex() >= 0 ? child(control()->TabIndex())
                                                                   : QAccessibleWidget::focusChild();
    }

private:
    // The page that is seen, and the arrows where there are any.
    QWidgetList widgets() const
    {
        QWidgetList seen;
        for (auto *child : control()->children()) {
            auto *widget = qobject_cast<QWidget *>(child);
            if (widget && !widget->isHidden() && !widget->isWindow())
                seen << widget;
        }
        return seen;
    }

    TExtCustomTab *control() const { return static_cast<TExtCustomTab *>(widget()); }

    mutable std::vector<QAccessible::Id> m_tabs;
};

// A page is called as its tab is, unless it has a name of its own.
class TPageInterface : public QAccessibleWidget
{
public:
    explicit TPageInterface(TTabSheet *page) : QAccessibleWidget(page, QAccessible::Pane) {}

    QString text(QAccessible::Text kind) const override
    {
        const auto own = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && own.isEmpty()
                   ? PlainCaption(static_cast<const TTabSheet *>(widget())->Caption())
                   : own;
    }
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    if (auto *control = qobject_cast<TExtCustomTab *>(object))
        return new TControlInterface(control);
    if (auto *page = qobject_cast<TTabSheet *>(object))
        return new TPageInterface(page);
    return nullptr;
}

void tell(TExtCustomTab *control, int tab, QAccessible::Event what)
{
    QAccessibleEvent event(control, what);
    event.setChild(tab);
    QAccessible::updateAccessibility(&event);
}

} // namespace

void InstallTabAccessibility()
{
    // Installing a factory twice changes nothing.
    QAccessible::installFactory(makeInterface);
}

void TellTabsChanged(TExtCustomTab *control)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent event(control, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&event);
}

void TellTabChanged(TExtCustomTab *control, int tab)
{
    if (!QAccessible::isActive() || tab < 0)
        return;
    tell(control, tab, QAccessible::NameChanged);
    QAccessible::State changed;
    changed.disabled = true;
    changed.selectable = true;
    QAccessibleStateChangeEvent event(control, changed);
    event.setChild(tab);
    QAccessible::updateAccessibility(&event);
}

void TellSelectionChanged(TExtCustomTab *control)
{
    if (!QAccessible::isActive() || control->TabIndex() < 0)
        return;
    tell(control, control->TabIndex(), QAccessible::Selection);
    if (control->hasFocus())
        tell(control, control->TabIndex(), QAccessible::Focus);
}

} // namespace Zelmar01
