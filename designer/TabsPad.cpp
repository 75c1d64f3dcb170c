#include "TabsPad.h"

#include <Zelmar01/tabs/QtRect.h>

#include <QMouseEvent>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

const QString name = u"__qt__passive_tabs"_s;

} // namespace

void LayPadOverTabs(TExtPageControl *control)
{
    if (!control->findChild<TTabsPad *>(name, Qt::FindDirectChildrenOnly))
        new TTabsPad(control);
}

TTabsPad::TTabsPad(TExtPageControl *control) : QWidget(control), m_control(control)
{
    setObjectName(name);
    control->installEventFilter(this);
    lower();
    cover();
    show();
}

bool TTabsPad::eventFilter(QObject *watched, QEvent *event)
{
    // Whatever changes the tabs has them painted.
    if (watched == m_control && (event->type() == QEvent::Paint || event->type() == QEvent::Resize))
        cover();
    return QWidget::eventFilter(watched, event);
}

void TTabsPad::cover()
{
    QRegion tabs;
    for (int tab = 0; tab < m_control->TabCount(); ++tab)
        tabs += ToQRect(m_control->GetTabRect(tab));
    setGeometry(m_control->rect());
    if (tabs == m_covered)
        return;
    m_covered = tabs;
    setVisible(!tabs.isEmpty());
    setMask(tabs);
}

void TTabsPad::mousePressEvent(QMouseEvent *event)
{
    const auto at = event->position().toPoint();
    const int tab = m_control->GetTabNumber({at.x(), at.y()});
    auto *const form = QDesignerFormWindowInterface::findFormWindow(m_control);
    if (!form)
        return;
    form->clearSelection(false);
    form->selectWidget(m_control);
    if (tab >= 0 && tab != m_control->TabIndex()) {
        const auto *const page = m_control->Pages(m_control->GetPageIndexByTabIndex(tab));
        form->cursor()->setWidgetProperty(m_control, u"ActivePage"_s, page->objectName());
    }
}

} // namespace Zelmar01
