#include "TabHint.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStyle>
#include <QToolTip>

#include <chrono>

namespace Zelmar01 {

namespace {

// As long as stock tool tips stay.
constexpr std::chrono::milliseconds shortest{10'000}, aLetter{40};

} // namespace

TTabHint::TTabHint() : QLabel(nullptr, Qt::ToolTip | Qt::BypassGraphicsProxyWidget)
{
    setObjectName(QStringLiteral("TabHint"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setForegroundRole(QPalette::ToolTipText);
    setBackgroundRole(QPalette::ToolTipBase);
    setAutoFillBackground(true);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setMargin(1 + style()->pixelMetric(QStyle::PM_ToolTipLabelFrameWidth, nullptr, this));
    m_end.setSingleShot(true);
    connect(&m_end, &QTimer::timeout, this, &QWidget::hide);
}

void TTabHint::ShowText(const QString &text, QPoint place, QWidget *from)
{
    setFont(QToolTip::font());
    setPalette(QToolTip::palette());
    setLayoutDirection(from->layoutDirection());
    setText(text);
    resize(sizeHint());
    const auto *under = QGuiApplication::screenAt(place);
    const auto screen = (under ? under : from->screen())->availableGeometry();
    if (place.x() + width() > screen.right())
        place.setX(qMax(screen.left(), screen.right() + 1 - width()));
    if (place.y() + height() > screen.bottom())
        place.setY(qMax(screen.top(), screen.bottom() + 1 - height()));
    move(place);
    show();
    m_end.start(shortest + aLetter * text.size());
}

} // namespace Zelmar01
