#include <Zelmar01/tabs/ExtCustomTab.h>

#include "CaptionPictures.h"
#include "TabAccessible.h"
#include "TabHint.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/WidgetBoxes.h>

#include <QHelpEvent>
#include <QHoverEvent>
#include <QShortcutEvent>

namespace Zelmar01 {

TExtCustomTab::TExtCustomTab(QWidget *parent)
    : TTabEnums(parent), m_placement(new TPlacement(this)), m_hottrack(new TExtHottrack(this)),
      m_glyphs(new TExtGlyphs(this)), m_activeFont(new TTabFont(this)), m_inactiveFont(new TTabFont(this)),
      m_style(CreateParams()), m_captions(std::make_unique<TCaptionPictures>())
{
    UseMessageBoxes();
    InstallTabAccessibility();
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    // Tells where the mouse is above pages, too.
    setAttribute(Qt::WA_Hover);
    // What is not painted keeps its picture.
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(m_hottrack, &TExtHottrack::OnChange, this, [this] { forgetColors(); });
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
    case QEvent::LayoutDirectionChange:
        forgetColors();
        forgetMouse();
        layoutChanged();
        break;
    case QEvent::Hide:
        cancelHint();
        break;
    default:
        if (event->type() == GroundChange())
            forgetColors();
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
        forgetColors();
        break;
    case QEvent::FontChange:
        // This is how widgets hear of another font of the application, which tabs take over.
        forgetColors();
        layoutChanged();
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
