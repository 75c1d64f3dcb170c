#include "TabArrows.h"

#include <Zelmar01/tabs/QtRect.h>

#include <QCoreApplication>
#include <QToolButton>

namespace Zelmar01 {

TTabArrows::TTabArrows(QWidget *parent, std::function<void(int)> scroll)
    : QWidget(parent), m_back(new QToolButton(this)), m_forward(new QToolButton(this))
{
    setCursor(Qt::ArrowCursor);
    for (auto *button : {m_back, m_forward}) {
        button->setAutoRepeat(true);
        button->setFocusPolicy(Qt::NoFocus);
        const int step = button == m_back ? -1 : 1;
        connect(button, &QToolButton::clicked, this, [scroll, step] { scroll(step); });
    }
    m_back->setAccessibleName(QCoreApplication::translate("Zelmar01", "Onglets précédents"));
    m_forward->setAccessibleName(QCoreApplication::translate("Zelmar01", "Onglets suivants"));
}

void TTabArrows::Place(const TRect &rect, bool vertical, bool canGoBack, bool canGoForward)
{
    setGeometry(ToQRect(rect));
    const auto half = vertical ? QSize(width(), height() / 2) : QSize(width() / 2, height());
    const QRect first(QPoint(0, 0), half);
    const auto second = first.translated(vertical ? 0 : half.width(), vertical ? half.height() : 0);
    const bool mirrored = !vertical && isRightToLeft();
    m_back->setGeometry(mirrored ? second : first);
    m_forward->setGeometry(mirrored ? first : second);
    m_back->setArrowType(vertical ? Qt::UpArrow : mirrored ? Qt::RightArrow : Qt::LeftArrow);
    m_forward->setArrowType(vertical ? Qt::DownArrow : mirrored ? Qt::LeftArrow : Qt::RightArrow);
    m_back->setEnabled(canGoBack);
    m_forward->setEnabled(canGoForward);
    setVisible(!rect.IsEmpty());
}

} // namespace Zelmar01
