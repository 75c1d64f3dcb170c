#include <Zelmar01/controls/zmGauges.h>

#include "ControlsAccessible.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>

#include <QAccessible>
#include <QCoreApplication>
#include <QEvent>
#include <QPaintEngine>
#include <QPainter>

#include <limits>
#include <utility>

namespace Zelmar01 {

namespace {

constexpr QSize usualSize(420, 32);
constexpr int lowest = -std::numeric_limits<int>::max(), highest = std::numeric_limits<int>::max();

[[noreturn]] void refuse(long long from, long long to)
{
    throw EInvalidOperation(Filled(Translate("Zelmar01", "La valeur doit être comprise entre %1 et %2"),
                                   {std::to_string(from), std::to_string(to)}));
}

QRect toQRect(const TGaugeRect &rect)
{
    return {rect.Left, rect.Top, rect.Right - rect.Left, rect.Bottom - rect.Top};
}

void pump()
{
    QCoreApplication::processEvents();
}

} // namespace

void TBltBitmap::MakeLike(const QImage &pattern, const QColor &color)
{
    QImage::operator=(QImage(pattern.size(), QImage::Format_RGB32));
    setDevicePixelRatio(pattern.devicePixelRatio());
    fill(color);
}

TzmGauge::TzmGauge(QWidget *parent) : QWidget(parent), m_placement(new TPlacement(this))
{
    InstallControlsAccessibility();
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFont(QFont(QStringLiteral("Arial"), 14));
    setParentFont(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    resize(usualSize);
}

void TzmGauge::Loaded()
{
    if (!std::exchange(m_loading, false))
        return;
    m_progress = between(m_progress);
}

void TzmGauge::endLoading()
{
    if (m_loading)
        Loaded();
}

bool TzmGauge::isDesigning() const
{
    for (const auto *widget = parentWidget(); widget; widget = widget->parentWidget())
        if (widget->inherits("QDesignerFormWindowInterface"))
            return true;
    return false;
}

void TzmGauge::SetMinValue(int value)
{
    endLoading();
    if (value == m_min)
        return;
    if (value > m_max)
        refuse(lowest, static_cast<long long>(m_max) - 1);
    m_min = value;
    m_progress = std::max(value, m_progress);
    boundMoved();
}

void TzmGauge::SetMaxValue(int value)
{
    endLoading();
    if (value == m_max)
        return;
    if (value < m_min)
        refuse(static_cast<long long>(m_min) + 1, highest);
    m_max = value;
    m_progress = std::min(value, m_progress);
    boundMoved();
}

void TzmGauge::SetProgress(int value)
{
    endLoading();
    moveTo(value);
}

void TzmGauge::StepBy(int delta)
{
    endLoading();
    moveTo(static_cast<long long>(m_progress) + delta);
}

int TzmGauge::between(long long value) const
{
    // A form may have left the bounds in the wrong order.
    return static_cast<int>(std::min<long long>(std::max<long long>(value, m_min), m_max));
}

void TzmGauge::moveTo(long long value)
{
    const int progress = between(value);
    if (progress == m_progress)
        return;
    const int shown = GetPercentDone();
    m_progress = progress;
    if (GetPercentDone() != shown)
        boundMoved();
}

void TzmGauge::boundMoved()
{
    repaint();
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(this, GetPercentDone());
        QAccessible::updateAccessibility(&event);
    }
}

void TzmGauge::writeBound(int &member, int value, void (TzmGauge::*set)(int))
{
    if (m_loading)
        member = value;
    else if (isDesigning())
        ShowingExceptions([&] { (this->*set)(value); });
    else
        (this->*set)(value);
}

void TzmGauge::setMin(int value)
{
    writeBound(m_min, value, &TzmGauge::SetMinValue);
}

void TzmGauge::setMax(int value)
{
    writeBound(m_max, value, &TzmGauge::SetMaxValue);
}

void TzmGauge::setProgress(int value)
{
    writeBound(m_progress, value, &TzmGauge::SetProgress);
}

template<class TValue>
void TzmGauge::change(TValue &member, TValue value)
{
    if (value == member)
        return;
    member = value;
    repaint();
}

void TzmGauge::setKind(TzmGaugeKind kind)
{
    if (kind == m_kind)
        return;
    if (!testAttribute(Qt::WA_WState_OwnSizePolicy)) {
        setSizePolicy(sizePolicy().transposed());
        setAttribute(Qt::WA_WState_OwnSizePolicy, false);
    }
    change(m_kind, kind);
    updateGeometry();
}

void TzmGauge::setShowText(bool show)
{
    change(m_showText, show);
}

void TzmGauge::setBorderStyle(TBorderStyle style)
{
    change(m_borderStyle, style);
}

void TzmGauge::setForeColor(TColor color)
{
    change(m_foreColor, color);
}

void TzmGauge::setBackColor(TColor color)
{
    change(m_backColor, color);
}

void TzmGauge::setFont_Color(TColor color)
{
    change(m_fontColor, color);
}

QSize TzmGauge::sizeHint() const
{
    return m_kind == gkVerticalBar ? usualSize.transposed() : usualSize;
}

QSize TzmGauge::minimumSizeHint() const
{
    const QSize text(fontMetrics().horizontalAdvance(QStringLiteral("100%")), fontMetrics().height());
    return (m_showText ? text : QSize(1, 1)) + QSize(2, 2);
}

void TzmGauge::Paint()
{
    QPainter painter(this);
    const auto scale = painter.paintEngine()->paintDevice()->devicePixelRatio();
    QImage like((QSizeF(size()) * scale).toSize(), QImage::Format_RGB32);
    like.setDevicePixelRatio(scale);
    TBltBitmap bitmap;
    bitmap.MakeLike(like, m_backColor.Resolved(palette()));
    TGaugeRect rect{0, 0, width(), height()};
    if (m_borderStyle == bsSingle)
        rect = {1, 1, width() - 1, height() - 1};
    PaintAsBar(bitmap, rect);
    painter.drawImage(0, 0, bitmap);
}

TGaugeRect TzmGauge::bar(const TGaugeRect &rect) const
{
    return m_kind == gkVerticalBar ? VerticalBar(rect, GetPercentDone())
                                   : HorizontalBar(rect, GetPercentDone());
}

void TzmGauge::PaintAsBar(TBltBitmap &bitmap, const TGaugeRect &rect)
{
    {
        QPainter painter(&bitmap);
        painter.fillRect(toQRect(rect), m_backColor.Resolved(palette()));
        painter.fillRect(toQRect(bar(rect)), m_foreColor.Resolved(palette()));
    }
    if (m_showText)
        PaintAsText(bitmap, rect);
}

QColor TzmGauge::textOn(TColor ground) const
{
    const auto text = m_fontColor.Resolved(palette());
    return m_fontColor.IsFixed() && ground.IsFixed() ? text : WithContrast(text, ground.Resolved(palette()));
}

void TzmGauge::PaintAsText(TBltBitmap &bitmap, const TGaugeRect &rect)
{
    QPainter painter(&bitmap);
    painter.setFont(font());
    const auto metrics = painter.fontMetrics();
    const auto text = QString::number(GetPercentDone()) + QLatin1Char('%');
    const int x = (rect.BarWidth() - metrics.horizontalAdvance(text)) / 2;
    const int y = (rect.BarHeight() - metrics.height()) / 2;
    const auto draw = [&](const QRegion &clip, const QColor &color) {
        painter.setClipRegion(clip);
        painter.setPen(color);
        painter.drawText(x, y + metrics.ascent(), text);
    };
    const auto whole = toQRect(rect), filled = toQRect(bar(rect)) & whole;
    const auto onBar = textOn(m_foreColor), behind = textOn(m_backColor);
    if (onBar == behind) {
        draw(whole, behind);
    } else {
        draw(filled, onBar);
        draw(QRegion(whole) - filled, behind);
    }
}

bool TzmGauge::event(QEvent *event)
{
    if (event->type() == QEvent::Polish)
        Loaded();
    return QWidget::event(event);
}

void TzmGauge::paintEvent(QPaintEvent *)
{
    ShowingExceptions([this] { Paint(); });
}

void ParamJauge(TzmGauge *gauge, int count)
{
    if (!gauge)
        return;
    gauge->SetMinValue(0);
    gauge->SetMaxValue(count);
    gauge->SetProgress(1);
    pump();
}

void AfficherJauge(TzmGauge *gauge)
{
    if (!gauge)
        return;
    gauge->StepIt();
    pump();
}

void RazJauge(TzmGauge *gauge)
{
    if (!gauge)
        return;
    gauge->SetMinValue(0);
    gauge->SetMaxValue(100);
    gauge->SetProgress(0);
    pump();
}

void FinirProgressBar(TzmGauge *gauge)
{
    if (!gauge)
        return;
    gauge->endLoading();
    gauge->m_progress = gauge->m_max;
    pump();
}

} // namespace Zelmar01
