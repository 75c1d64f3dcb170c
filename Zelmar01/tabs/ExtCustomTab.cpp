#include <Zelmar01/tabs/ExtCustomTab.h>

#include "CaptionPictures.h"
#include "TabAccessible.h"
#include "TabArrows.h"
#include "TabHint.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/WidgetBoxes.h>
#include <Zelmar01/tabs/ComCtlVersion.h>
#include <Zelmar01/tabs/QtRect.h>
#include <Zelmar01/tabs/TabStyleWord.h>

#include <QHelpEvent>
#include <QHoverEvent>
#include <QScopeGuard>
#include <QShortcutEvent>

#include <limits>

namespace Zelmar01 {

namespace {

constexpr TColor defaultInactiveColor(0x00A4A0A0);
constexpr QSize verticalSize(70, 35); // of tabs that had none

// Around the content of tabs that are as large as it.
constexpr QSize padding(12, 8);
constexpr int verticalIndent = 8;
constexpr int leastLength = 24;

// The value of a * b / c, rounded, as the scaling of forms has it.
int mulDiv(int a, int b, int c)
{
    return c == 0 ? a : qRound(static_cast<double>(a) * b / c);
}

} // namespace

TExtCustomTab::TExtCustomTab(QWidget *parent)
    : TTabEnums(parent), m_hottrack(new TExtHottrack(this)), m_glyphs(new TExtGlyphs(this)),
      m_activeFont(new TTabFont(this)), m_inactiveFont(new TTabFont(this)),
      m_inactiveColor(defaultInactiveColor), m_style(CreateParams()),
      m_captions(std::make_unique<TCaptionPictures>())
{
    UseMessageBoxes();
    InstallTabAccessibility();
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    // Tells where the mouse is above pages, too.
    setAttribute(Qt::WA_Hover);
    // What is not painted keeps its picture.
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(m_hottrack, &TExtHottrack::OnChange, this, [this] {
        m_colors.reset();
        Invalidate();
    });
    connect(m_glyphs, &TExtGlyphs::OnChange, this, [this] { layoutChanged(); });
    connect(m_glyphs, &TExtGlyphs::OnChangePicture, this, [this] { layoutChanged(); });
    for (auto *font : {m_activeFont, m_inactiveFont})
        connect(font, &TTabFont::OnChange, this, [this] { TabFontChanged(); });
}

TExtCustomTab::~TExtCustomTab() = default;

void TExtCustomTab::Loaded()
{
    if (!m_loading)
        return;
    m_loading = false;
    m_savedHint = toolTip();
}

void TExtCustomTab::endLoading()
{
    if (m_loading)
        Loaded();
}

bool TExtCustomTab::IsDesigning() const
{
    for (const auto *widget = parentWidget(); widget; widget = widget->parentWidget()) {
        if (widget->inherits("QDesignerFormWindowInterface"))
            return true;
    }
    return false;
}

bool TExtCustomTab::SelectNextTab(bool goForward, bool wrap)
{
    const int count = TabCount(), step = goForward ? 1 : -1;
    int tab = m_selected >= 0 || goForward ? m_selected : count;
    for (int tried = 0; tried < count; ++tried) {
        tab += step;
        if (tab < 0 || tab >= count) {
            if (!wrap)
                return false;
            tab = goForward ? 0 : count - 1;
        }
        if (tab != m_selected && IsTabEnabled(tab)) {
            SelectTab(tab);
            return true;
        }
    }
    return false;
}

void TExtCustomTab::setColor(TColor color)
{
    if (!m_parentColor && color == m_color)
        return;
    m_parentColor = false;
    m_color = color;
    m_colors.reset();
    Invalidate();
}

void TExtCustomTab::resetColor()
{
    m_color = clWindow;
    setParentColor(true);
}

void TExtCustomTab::setParentColor(bool parentColor)
{
    if (parentColor == m_parentColor)
        return;
    m_parentColor = parentColor;
    m_colors.reset();
    Invalidate();
}

void TExtCustomTab::setMultiLine(bool multiLine)
{
    if (multiLine == m_multiLine)
        return;
    m_multiLine = multiLine;
    m_style = CreateParams();
    layoutChanged();
}

void TExtCustomTab::setTabActiveColor(TColor color)
{
    if (color == m_activeColor)
        return;
    m_activeColor = color;
    m_colors.reset();
    Invalidate();
}

void TExtCustomTab::setTabInactiveColor(TColor color)
{
    if (color == m_inactiveColor)
        return;
    m_inactiveColor = color;
    m_colors.reset();
    Invalidate();
}

void TExtCustomTab::resetTabInactiveColor()
{
    setTabInactiveColor(defaultInactiveColor);
}

void TExtCustomTab::setTabHeight(int height)
{
    height = qBound(0, height, GreatestWord);
    if (height == m_tabHeight)
        return;
    m_tabHeight = height;
    (isVertical() ? m_itemWidth : m_itemHeight) = height;
    layoutChanged();
}

void TExtCustomTab::setTabWidth(int width)
{
    width = qBound(0, width, GreatestWord);
    if (width == m_tabWidth)
        return;
    m_tabWidth = width;
    (isVertical() ? m_itemHeight : m_itemWidth) = width;
    layoutChanged();
}

void TExtCustomTab::setTabHints(const QStringList &hints)
{
    m_tabHints = hints;
    m_reported.clear();
}

void TExtCustomTab::setTabPosition(TExtTabPosition position)
{
    if (position == m_tabPosition)
        return;
    BeginUpdate();
    const auto end = qScopeGuard([this] { EndUpdate(); });
    const bool wasVertical = isVertical();
    if (IsVertical(position) && !wasVertical) {
        if (m_tabHeight == 0)
            m_tabHeight = verticalSize.height();
        if (m_tabWidth == 0)
            m_tabWidth = verticalSize.width();
        m_itemWidth = m_tabHeight;
        m_itemHeight = m_tabWidth;
    } else if (!IsVertical(position) && wasVertical) {
        m_itemWidth = m_tabWidth;
        m_itemHeight = m_tabHeight;
    }
    m_tabPosition = position;
    if (position != tabPosTop && m_tabStyle == tabStButton)
        m_tabStyle = tabStDefault;
    m_style = CreateParams();
    forgetMouse();
    layoutChanged();
}

void TExtCustomTab::setTabStyle(TExtTabStyle style)
{
    if (style == m_tabStyle)
        return;
    m_tabStyle = style;
    if (style == tabStButton)
        setTabPosition(tabPosTop);
    m_style = style == tabStButton ? m_style | TCS_BUTTONS : m_style & ~TCS_BUTTONS;
    layoutChanged();
}

void TExtCustomTab::setTabWordWrap(bool wordWrap)
{
    if (wordWrap == m_wordWrap)
        return;
    m_wordWrap = wordWrap;
    layoutChanged();
}

void TExtCustomTab::ChangeScale(int m, int d)
{
    setTabHeight(mulDiv(m_tabHeight, m, d));
    setTabWidth(mulDiv(m_tabWidth, m, d));
    for (auto *font : {m_activeFont, m_inactiveFont})
        font->setHeight(mulDiv(font->Height(), m, d));
}

std::uint32_t TExtCustomTab::CreateParams() const
{
    return StyleWord(m_tabPosition, m_tabStyle, m_multiLine);
}

QFont TExtCustomTab::SizingFont() const
{
    const auto widthOfW = [](const QFont &font) {
        return QFontMetrics(font).horizontalAdvance(QLatin1Char('W'));
    };
    const auto active = m_activeFont->Font(), inactive = m_inactiveFont->Font();
    return widthOfW(inactive) > widthOfW(active) ? inactive : active;
}

bool TExtCustomTab::IsNewComCtl()
{
    static const bool isNew = IsNewComCtlVersion(ComCtlVersion());
    return isNew;
}

void TExtCustomTab::TabFontChanged()
{
    m_colors.reset();
    layoutChanged();
}

QSize TExtCustomTab::contentSize(const QString &caption, const QFontMetrics &metrics) const
{
    const auto lines =
        m_wordWrap ? WrappedCaption(caption, std::numeric_limits<int>::max(), metrics) : QStringList(caption);
    QSize size(0, static_cast<int>(lines.size()) * metrics.height());
    for (const auto &line : lines)
        size.setWidth(qMax(size.width(), metrics.horizontalAdvance(PlainCaption(line))));
    const auto *images = m_glyphs->ImageList();
    if (images->Count() == 0)
        return size;
    const QSize cell(images->Width(), images->Height());
    const int spacing = m_glyphs->Spacing();
    return m_glyphs->Position() == glPosLeft
               ? QSize(size.width() + spacing + cell.width(), qMax(size.height(), cell.height()))
               : QSize(qMax(size.width(), cell.width()), size.height() + spacing + cell.height());
}

const TStripLayout &TExtCustomTab::Strip() const
{
    if (m_strip)
        return *m_strip;
    TStripSpec spec{m_style, width(), height(), isRightToLeft(), {}, m_itemHeight, m_selected, m_firstTab};
    const int count = TabCount();
    spec.Lengths.assign(static_cast<std::size_t>(count), m_itemWidth);
    if (m_itemWidth == 0 || m_itemHeight == 0) {
        const QFontMetrics metrics(SizingFont());
        int thickness = 0;
        for (int tab = 0; tab < count; ++tab) {
            auto size = contentSize(TabCaption(tab), metrics) + padding;
            if (isVertical())
                size = QSize(size.height(), size.width() + verticalIndent);
            if (m_itemWidth == 0)
                spec.Lengths[static_cast<std::size_t>(tab)] = qMax(size.width(), leastLength);
            thickness = qMax(thickness, size.height());
        }
        if (m_itemHeight == 0)
            spec.Thickness = thickness;
    }
    return m_strip.emplace(spec);
}

int TExtCustomTab::GetTabNumber(TPoint point) const
{
    return HandleAllocated() ? Strip().TabAt(point) : -1;
}

TRect TExtCustomTab::GetTabRect(int tab) const
{
    return Strip().Item(tab);
}

TRect TExtCustomTab::GetSheetRect() const
{
    return Strip().SheetArea();
}

TRect TExtCustomTab::DisplayRect() const
{
    return Strip().DisplayArea();
}

void TExtCustomTab::layoutChanged()
{
    m_strip.reset();
    if (HandleAllocated() || testAttribute(Qt::WA_Resized)) {
        bringSelectedIntoSight();
        placeArrows();
        const auto page = DisplayRect();
        setContentsMargins(page.Left, page.Top, width() - page.Right, height() - page.Bottom);
        realign();
    }
    updateGeometry();
    Invalidate();
}

void TExtCustomTab::bringSelectedIntoSight()
{
    m_firstTab = Strip().FirstTabShowing(m_selected);
    m_strip.reset();
}

void TExtCustomTab::placeArrows()
{
    const auto &strip = Strip();
    m_firstTab = strip.FirstTab();
    if (strip.Arrows().IsEmpty() && !m_arrows)
        return;
    if (!m_arrows)
        m_arrows = new TTabArrows(this, [this](int step) { scrollTo(m_firstTab + step); });
    m_arrows->Place(strip.Arrows(), isVertical(), m_firstTab > 0, m_firstTab < strip.LastFirstTab());
    m_arrows->raise();
}

void TExtCustomTab::scrollTo(int firstTab)
{
    m_firstTab = qMax(0, firstTab);
    m_strip.reset();
    forgetMouse();
    placeArrows();
    Invalidate();
}

void TExtCustomTab::tabsChanged(int selected)
{
    m_selected = selected;
    m_reported.clear();
    forgetMouse();
    grabAccelerators();
    layoutChanged();
    scrollTo(Strip().FirstTabShowing(m_selected));
    TellTabsChanged(this);
}

void TExtCustomTab::tabChanged(int tab)
{
    m_reported.clear();
    grabAccelerators();
    if (m_itemWidth == 0 || m_itemHeight == 0)
        layoutChanged();
    else
        Invalidate();
    TellTabChanged(this, tab);
}

void TExtCustomTab::showSelected(int tab)
{
    if (tab == m_selected)
        return;
    m_selected = tab;
    m_reported.clear();
    m_strip.reset();
    bringSelectedIntoSight();
    placeArrows();
    Invalidate();
    TellSelectionChanged(this);
}

bool TExtCustomTab::canChange()
{
    bool allow = true;
    emit OnChanging(this, allow);
    return allow;
}

void TExtCustomTab::BeginUpdate()
{
    // The picture that stays may have gone to the screen directly.
    if (m_paintLock == 0 && !m_firstPaint && !m_bufferIsCurrent && isVisible() && !m_canvas)
        paintBuffer(rect(), devicePixelRatio());
    ++m_eraseLock;
    ++m_paintLock;
}

void TExtCustomTab::EndUpdate()
{
    if (m_eraseLock > 0)
        --m_eraseLock;
    if (m_paintLock > 0)
        --m_paintLock;
    if (m_eraseLock == 0 && m_paintLock == 0)
        Invalidate();
}

QSize TExtCustomTab::sizeHint() const
{
    const auto page = DisplayRect();
    return QSize(width() - page.Width(), height() - page.Height()) + pageSizeHint(false);
}

QSize TExtCustomTab::minimumSizeHint() const
{
    const auto page = DisplayRect();
    return QSize(width() - page.Width(), height() - page.Height()) + pageSizeHint(true);
}

bool TExtCustomTab::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::Polish:
        ShowingExceptions([this] { endLoading(); });
        break;
    case QEvent::Enter:
        m_mouseInside = true;
        break;
    case QEvent::Leave:
        mouseLeft();
        break;
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
        // Stock widgets repaint as a whole when the mouse enters or leaves them.
        mouseMoved(static_cast<QHoverEvent *>(event)->position().toPoint());
        return true;
    case QEvent::HoverLeave:
        return true;
    case QEvent::ToolTip:
        if (!m_showHint || showHint(*static_cast<QHelpEvent *>(event)))
            return true;
        break;
    case QEvent::QueryWhatsThis:
    case QEvent::WhatsThis: {
        const auto *help = static_cast<QHelpEvent *>(event);
        THelpRequest request{help->globalPos(), nullptr};
        bool helped = false;
        ShowingExceptions([&] {
            if (event->type() == QEvent::WhatsThis)
                helped = WMHelp(request);
            else
                helped = hasHelp(help->pos());
        });
        event->setAccepted(helped);
        if (helped)
            return true;
        break;
    }
    case QEvent::Shortcut: {
        const auto key = m_accelerators.value(static_cast<QShortcutEvent *>(event)->shortcutId());
        if (!key.isNull()) {
            ShowingExceptions([&] { CMDialogChar(key); });
            return true;
        }
        break;
    }
    case QEvent::ParentChange:
    case QEvent::ApplicationFontChange:
    case QEvent::LayoutDirectionChange:
        m_colors.reset();
        forgetMouse();
        layoutChanged();
        break;
    case QEvent::Hide:
        cancelHint();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void TExtCustomTab::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    layoutChanged();
}

void TExtCustomTab::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
    case QEvent::EnabledChange:
    case QEvent::FontChange:
        m_colors.reset();
        Invalidate();
        break;
    case QEvent::ActivationChange:
        m_colors.reset();
        if (!palette().isEqual(QPalette::Active, QPalette::Inactive))
            Invalidate();
        break;
    default:
        break;
    }
}

} // namespace Zelmar01
