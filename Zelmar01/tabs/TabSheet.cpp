#include <Zelmar01/tabs/TabSheet.h>

#include <Zelmar01/tabs/ExtPageControl.h>

#include <QEvent>

namespace Zelmar01 {

TTabSheet::TTabSheet(QWidget *parent) : QWidget(parent)
{
    hide();
    if (auto *control = qobject_cast<TExtPageControl *>(parent))
        control->AddPage(this);
}

TTabSheet::~TTabSheet()
{
    if (m_pageControl)
        m_pageControl->RemovePage(this);
}

void TTabSheet::setCaption(const QString &caption)
{
    if (caption == m_caption)
        return;
    m_caption = caption;
    if (m_pageControl)
        m_pageControl->pageChanged(this);
}

int TTabSheet::PageIndex() const
{
    return m_pageControl ? m_pageControl->IndexOf(this) : -1;
}

void TTabSheet::setPageIndex(int index)
{
    if (m_pageControl)
        m_pageControl->MovePage(PageIndex(), index);
}

void TTabSheet::setTabVisible(bool visible)
{
    if (visible == m_tabVisible)
        return;
    m_tabVisible = visible;
    if (m_pageControl)
        m_pageControl->updateTabs();
}

void TTabSheet::setEnabled(bool enabled)
{
    QWidget::setEnabled(enabled);
}

void TTabSheet::setTag(int tag)
{
    if (tag == m_tag)
        return;
    m_tag = tag;
    if (m_pageControl)
        m_pageControl->pageChanged(this);
}

void TTabSheet::DestroyHandle()
{
    if (internalWinId() != 0)
        destroy();
}

bool TTabSheet::event(QEvent *event)
{
    // A page that is given to another parent leaves its control.
    if (event->type() == QEvent::ParentChange && m_pageControl && parentWidget() != m_pageControl)
        m_pageControl->RemovePage(this);
    return QWidget::event(event);
}

void TTabSheet::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && m_pageControl)
        m_pageControl->pageChanged(this);
}

} // namespace Zelmar01
