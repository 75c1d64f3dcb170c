#include <Zelmar01/tabs/ExtCustomTab.h>

#include "TabHint.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/tabs/QtRect.h>
#include <Zelmar01/tabs/TabErrors.h>
#include <Zelmar01/tabs/TabStyleWord.h>

#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QWhatsThis>

namespace Zelmar01 {

namespace {

constexpr int wheelStep = 120;

QString lineOf(const QStringList &lines, int index)
{
    if (index >= lines.size())
        throw EStringListError(index);
    return lines[index];
}

// The first one with a help text, from a widget on upwards.
const QWidget *withHelp(const QWidget *widget)
{
    while (widget && widget->whatsThis().isEmpty())
        widget = widget->parentWidget();
    return widget;
}

} // namespace

void TExtCustomTab::mousePressEvent(QMouseEvent *event)
{
    cancelHint();
    const int tab = GetTabNumber(FromQPoint(event->position().toPoint()));
    if (event->button() != Qt::LeftButton || tab < 0) {
        event->ignore();
        return;
    }
    ShowingExceptions([&] {
        if (tab == m_selected)
            setFocus(Qt::MouseFocusReason);
        else if (IsTabEnabled(tab) || IsDesigning())
            SelectTab(tab);
    });
}

// Over the strip only; pages scroll by themselves.
void TExtCustomTab::wheelEvent(QWheelEvent *event)
{
    if (!Strip().StripArea().Contains(FromQPoint(event->position().toPoint()))) {
        event->ignore();
        return;
    }
    cancelHint();
    const auto delta = event->angleDelta();
    m_wheel += qAbs(delta.x()) > qAbs(delta.y()) ? delta.x() : delta.y();
    const int steps = m_wheel / wheelStep;
    m_wheel %= wheelStep;
    event->accept();
    const QPointer<TExtCustomTab> self = this;
    for (int step = 0; self && step < qAbs(steps); ++step)
        ShowingExceptions([&] { SelectNextTab(steps < 0, false); });
}

void TExtCustomTab::keyPressEvent(QKeyEvent *event)
{
    cancelHint();
    const bool control = event->modifiers() & Qt::ControlModifier;
    const bool shift = event->modifiers() & Qt::ShiftModifier;
    const bool plain = hasFocus() && !(event->modifiers() & ~Qt::KeypadModifier);
    const int key = event->key();
    // Keys that pages do not use come here too.
    if (control && (key == Qt::Key_Tab || key == Qt::Key_Backtab)) {
        ShowingExceptions([&] { SelectNextTab(key == Qt::Key_Tab && !shift, true); });
        return;
    }
    if (control && (key == Qt::Key_PageDown || key == Qt::Key_PageUp)) {
        ShowingExceptions([&] { SelectNextTab(key == Qt::Key_PageDown, true); });
        return;
    }
    if (plain && key == Qt::Key_F1) {
        THelpRequest request{QCursor::pos(), nullptr};
        ShowingExceptions([&] { event->setAccepted(WMHelp(request)); });
        return;
    }
    const int back = isVertical() ? Qt::Key_Up : isRightToLeft() ? Qt::Key_Right : Qt::Key_Left;
    const int forward = isVertical() ? Qt::Key_Down : isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
    if (plain && (key == back || key == forward)) {
        ShowingExceptions([&] { SelectNextTab(key == forward, false); });
    } else if (plain && (key == Qt::Key_Home || key == Qt::Key_End)) {
        const int count = TabCount();
        const int step = key == Qt::Key_Home ? 1 : -1;
        int tab = key == Qt::Key_Home ? 0 : count - 1;
        while (tab >= 0 && tab < count && !IsTabEnabled(tab))
            tab += step;
        if (tab >= 0 && tab < count && tab != m_selected)
            ShowingExceptions([&] { SelectTab(tab); });
    } else if (const int step = plain && (m_style & TCS_MULTILINE) ? rowStep(key) : 0) {
        const int tab = Strip().TabInRow(m_selected, step, [this](int other) { return IsTabEnabled(other); });
        if (tab >= 0)
            ShowingExceptions([&] { SelectTab(tab); });
    } else {
        QWidget::keyPressEvent(event);
    }
}

// Rows begin at the outer edge: an arrow towards it goes to the row before, one towards the page to the next.
int TExtCustomTab::rowStep(int key) const
{
    constexpr int outer[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down};
    constexpr int inner[] = {Qt::Key_Right, Qt::Key_Left, Qt::Key_Down, Qt::Key_Up};
    const bool mirrored = isVertical() && isRightToLeft();
    if (key == outer[m_tabPosition])
        return mirrored ? 1 : -1;
    if (key == inner[m_tabPosition])
        return mirrored ? -1 : 1;
    return 0;
}

// The selected tab, or the one that the next key selects.
int TExtCustomTab::focusTab() const
{
    if (m_selected >= 0)
        return m_selected;
    for (int tab = 0; tab < TabCount(); ++tab) {
        if (IsTabEnabled(tab))
            return tab;
    }
    return -1;
}

void TExtCustomTab::focusInEvent(QFocusEvent *)
{
    update(ToQRect(Strip().DrawnItem(focusTab())));
}

void TExtCustomTab::focusOutEvent(QFocusEvent *)
{
    cancelHint();
    update(ToQRect(Strip().DrawnItem(focusTab())));
}

// Over a page the mouse has left the control, which Qt does not tell.
void TExtCustomTab::mouseMoved(QPoint point)
{
    if (childAt(point)) {
        if (m_mouseInside)
            mouseLeft();
        return;
    }
    m_mouseInside = true;
    guarded([&] { hitTest(point); });
}

void TExtCustomTab::hitTest(QPoint point)
{
    if (!m_mouseInside || QApplication::mouseButtons() != Qt::NoButton || mouseGrabber())
        return;
    const int tab = GetTabNumber(FromQPoint(point));
    auto &hot = m_hottrack->HotTab;
    if (m_hottrack->Enabled() && tab != hot) {
        const int old = hot;
        hot = tab;
        HottrackChange(old, tab);
    }
    if (m_showHint && tab != m_lastHintTab && !IsDesigning()) {
        m_lastHintTab = tab;
        cancelHint();
        setToolTip(QString());
        // The lines are counted by tabs and taken by pages.
        if (tab >= 0 && m_tabHints.size() >= tab + 1)
            setToolTip(lineOf(m_tabHints, indexOfTab(tab)));
    }
}

void TExtCustomTab::mouseLeft()
{
    cancelHint();
    m_mouseInside = false;
    auto &hot = m_hottrack->HotTab;
    if (m_hottrack->Enabled() && hot != -1)
        guarded([&] { HottrackChange(std::exchange(hot, -1), -1); });
    if (m_showHint && m_lastHintTab != -1) {
        m_lastHintTab = -1;
        setToolTip(m_savedHint);
    }
}

// Tabs are not where they were.
void TExtCustomTab::forgetMouse()
{
    m_hottrack->HotTab = -1;
    if (m_lastHintTab != -1) {
        m_lastHintTab = -1;
        setToolTip(m_savedHint);
    }
    cancelHint();
}

void TExtCustomTab::HottrackChange(int oldTab, int newTab)
{
    if (!HandleAllocated())
        return;
    QRegion tabs(ToQRect(GetTabRect(oldTab)));
    tabs += ToQRect(GetTabRect(newTab));
    m_hotPaint = true;
    repaint(tabs);
    // Nothing was painted where the control is not seen.
    m_hotPaint = false;
}

void TExtCustomTab::setShowHint(bool show)
{
    m_showHint = show;
    if (!show)
        cancelHint();
}

bool TExtCustomTab::showHint(const QHelpEvent &event)
{
    const int tab = GetTabNumber(FromQPoint(event.pos()));
    if (tab < 0)
        return false;
    if (toolTip().isEmpty())
        return true;
    const auto item = GetTabRect(tab);
    if (!m_hintWindow)
        m_hintWindow = std::make_unique<TTabHint>();
    m_hintWindow->ShowText(toolTip(), mapToGlobal(QPoint(item.Left + 3, item.Bottom + 1)), this);
    return true;
}

void TExtCustomTab::cancelHint()
{
    if (m_hintWindow)
        m_hintWindow->hide();
    if (m_mouseInside && QToolTip::isVisible())
        QToolTip::hideText();
}

void TExtCustomTab::grabAccelerators()
{
    for (auto shortcut = m_accelerators.keyBegin(); shortcut != m_accelerators.keyEnd(); ++shortcut)
        releaseShortcut(*shortcut);
    m_accelerators.clear();
    for (int tab = 0; tab < TabCount(); ++tab) {
        const auto key = AcceleratorOf(TabCaption(tab));
        // The first of several tabs with the same one has it.
        if (!key.isNull() && !m_accelerators.values().contains(key))
            m_accelerators[grabShortcut(QKeySequence(Qt::ALT | Qt::Key(key.unicode())))] = key;
    }
}

bool TExtCustomTab::CMDialogChar(QChar key)
{
    if (!isEnabled() || !isVisible())
        return false;
    for (int tab = 0; tab < TabCount(); ++tab) {
        if (!key.isNull() && AcceleratorOf(TabCaption(tab)) == key.toUpper()) {
            SelectTab(tab);
            return true;
        }
    }
    return false;
}

bool TExtCustomTab::WMHelp(THelpRequest &request)
{
    const int tab = GetTabNumber(FromQPoint(mapFromGlobal(request.MousePos)));
    if (tab >= 0)
        request.Item = helpItem(tab);
    const auto *item = withHelp(request.Item ? request.Item : this);
    if (!item)
        return false;
    QWhatsThis::showText(request.MousePos, item->whatsThis(), this);
    return true;
}

bool TExtCustomTab::hasHelp(QPoint point) const
{
    const int tab = GetTabNumber(FromQPoint(point));
    const QWidget *item = tab >= 0 ? helpItem(tab) : nullptr;
    return withHelp(item ? item : this);
}

} // namespace Zelmar01
