#pragma once

#include <Zelmar01/core/Colors.h>
#include <Zelmar01/core/Inherited.h>
#include <Zelmar01/core/Placement.h>
#include <Zelmar01/tabs/ExtGlyphs.h>
#include <Zelmar01/tabs/ExtHottrack.h>
#include <Zelmar01/tabs/TabEnums.h>
#include <Zelmar01/tabs/TabFont.h>
#include <Zelmar01/tabs/TabGeometry.h>
#include <Zelmar01/tabs/TabText.h>

#include <QImage>
#include <QMap>
#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <exception>
#include <memory>
#include <optional>
#include <set>
#include <string>

class QHelpEvent;

namespace Zelmar01 {

class TCaptionPictures;
class TTabArrows;
class TTabHint;

/// The state of a tab that is being drawn.
enum TOwnerDrawStateFlag { odSelected = 1, odGrayed = 2, odDisabled = 4, odChecked = 8, odFocused = 16 };
using TOwnerDrawState = QFlags<TOwnerDrawStateFlag>;
Q_DECLARE_OPERATORS_FOR_FLAGS(TOwnerDrawState)

/// One request to draw a tab.
struct TTabDrawRequest
{
    int ItemID = -1;             ///< the tab
    std::uint32_t ItemState = 0; ///< its low word holds the bits of TOwnerDrawState
    QPainter *DC = nullptr;
    TRect RcItem; ///< the item's rectangle: the tab's place, grown if it is the selected ordinary tab
};

/// A request for help at a place of the screen.
struct THelpRequest
{
    QPoint MousePos;
    QWidget *Item = nullptr; ///< what help is asked about
};

/// What the page control and the tab control have in common: the look of tabs, their geometry, drawing,
/// backgrounds, hot-tracking, hints, keyboard and update brackets. Descendants own the captions and know
/// which tabs are enabled.
///
/// Tabs are drawn by the control itself, in its own paint event, together with the strip and the page area:
/// first the backgrounds, then the frames, then one draw request a tab (CNDrawTab, which calls DrawTab, which
/// calls OnDrawTab or DefaultDrawTab). Nothing of it is a stock tab bar, so that a disabled tab stays out of
/// reach and no tab at all may be selected.
///
/// Coordinates are pixels of the control. A control of a right-to-left form is the mirror picture of the
/// other one, glyphs beside their captions and the shifts of drawn tabs included.
///
/// Fixed colours meet colours of the desktop here, on dark and high-contrast desktops too: a fixed tab colour
/// is painted darker or lighter where the desktop's text colour would be hard to read on it, and so is a
/// fixed text colour on a tab colour of the desktop. Colours that are both fixed are painted as they are.
///
/// An error that a handler of an event raises while the control is being painted or while the mouse moves
/// over it goes to the exception display, from the event loop, and not again until tabs, selection or hints
/// change.
class TExtCustomTab : public TTabEnums, public IGround
{
    Q_OBJECT
    Q_PROPERTY(Zelmar01::TPlacement::TAlign Align READ Align WRITE setAlign RESET resetAlign)
    Q_PROPERTY(Zelmar01::TPlacement::TAnchors Anchors READ Anchors WRITE setAnchors RESET resetAnchors)
    Q_PROPERTY(QColor Color READ shownColor WRITE setColor RESET resetColor)
    Q_PROPERTY(bool ParentColor READ ParentColor WRITE setParentColor RESET resetParentColor)
    Q_PROPERTY(bool ParentFont READ ParentFont WRITE setParentFont STORED false)
    Q_PROPERTY(bool MultiLine READ MultiLine WRITE setMultiLine)
    Q_PROPERTY(bool ShowHint READ ShowHint WRITE setShowHint)
    Q_PROPERTY(bool Hottrack_Enabled READ hottrackEnabled WRITE setHottrack_Enabled)
    Q_PROPERTY(QColor Hottrack_TabActiveColor READ shownHottrackActive WRITE setHottrack_TabActiveColor RESET
                   resetHottrack_TabActiveColor)
    Q_PROPERTY(QColor Hottrack_TabInactiveColor READ shownHottrackInactive WRITE setHottrack_TabInactiveColor
                   RESET resetHottrack_TabInactiveColor)
    Q_PROPERTY(
        QColor TabActiveColor READ shownTabActiveColor WRITE setTabActiveColor RESET resetTabActiveColor)
    Q_PROPERTY(QFont TabActiveFont READ tabActiveFontParts WRITE setTabActiveFont RESET resetTabActiveFont)
    Q_PROPERTY(QColor TabActiveFont_Color READ shownActiveFontColor WRITE setTabActiveFont_Color RESET
                   resetTabActiveFont_Color)
    Q_PROPERTY(QPixmap TabGlyphs_Glyph READ glyph WRITE setTabGlyphs_Glyph RESET resetTabGlyphs_Glyph)
    Q_PROPERTY(int TabGlyphs_NumGlyphs READ numGlyphs WRITE setTabGlyphs_NumGlyphs)
    Q_PROPERTY(TExtGlyphPosition TabGlyphs_Position READ glyphPosition WRITE setTabGlyphs_Position)
    Q_PROPERTY(
        int TabGlyphs_Spacing READ glyphSpacing WRITE setTabGlyphs_Spacing RESET resetTabGlyphs_Spacing)
    Q_PROPERTY(QColor TabGlyphs_TransparentColor READ glyphTransparentColor WRITE
                   setTabGlyphs_TransparentColor RESET resetTabGlyphs_TransparentColor)
    Q_PROPERTY(int TabHeight READ TabHeight WRITE setTabHeight)
    Q_PROPERTY(QStringList TabHints READ TabHints WRITE setTabHints)
    Q_PROPERTY(QColor TabInactiveColor READ shownTabInactiveColor WRITE setTabInactiveColor RESET
                   resetTabInactiveColor)
    Q_PROPERTY(
        QFont TabInactiveFont READ tabInactiveFontParts WRITE setTabInactiveFont RESET resetTabInactiveFont)
    Q_PROPERTY(QColor TabInactiveFont_Color READ shownInactiveFontColor WRITE setTabInactiveFont_Color RESET
                   resetTabInactiveFont_Color)
    // Before TabStyle: buttons exist at the top only.
    Q_PROPERTY(TExtTabPosition TabPosition READ TabPosition WRITE setTabPosition RESET resetTabPosition)
    Q_PROPERTY(TExtTabStyle TabStyle READ TabStyle WRITE setTabStyle RESET resetTabStyle)
    Q_PROPERTY(int TabWidth READ TabWidth WRITE setTabWidth)
    Q_PROPERTY(bool TabWordWrap READ TabWordWrap WRITE setTabWordWrap)
public:
    ~TExtCustomTab() override;

    // Loading. A control is loading from its construction until it is first polished (just before it is first
    // shown), until Loaded() is called or until a writer of the selection is called, whichever comes first.

    bool IsLoading() const { return m_loading; }
    virtual void Loaded();
    /// Whether the control stands in a form designer; disabled tabs can be selected there.
    bool IsDesigning() const;

    // The tabs.

    virtual int TabCount() const = 0;
    virtual QString TabCaption(int tab) const = 0;
    virtual bool IsTabEnabled(int tab) const = 0;
    /// The selected tab, -1 for none.
    int TabIndex() const { return m_selected; }
    /// Selects a tab as the user does: asks OnChanging, refuses a disabled tab, fires OnChange.
    virtual void SelectTab(int tab) = 0;
    /// Selects the next enabled tab, on from the selected one; returns whether there is one.
    bool SelectNextTab(bool goForward, bool wrap);

    // Appearance.

    /// The colour of the page area. While ParentColor is set, as it is at first, that of the parent is taken.
    TColor Color() const { return m_color; }
    void setColor(TColor color);
    bool ParentColor() const { return m_parentColor; }
    void setParentColor(bool parentColor);

    /// What nested controls see behind them: the page area's colour.
    QBrush Ground() const override { return colors().Page; }

    /// The place on a parent that has no layout (core/Placement.h).
    TPlacement::TAlign Align() const { return m_placement->Align(); }
    void setAlign(TPlacement::TAlign align) { m_placement->setAlign(align); }
    TPlacement::TAnchors Anchors() const { return m_placement->Anchors(); }
    void setAnchors(TPlacement::TAnchors anchors) { m_placement->setAnchors(anchors); }
    /// Whether the font, which is that of pages and not of captions, is the parent's.
    bool ParentFont() const { return HasParentFont(*this); }
    void setParentFont(bool parentFont) { SetParentFont(*this, parentFont); }

    /// Tabs that find no room go on in a further row, instead of being scrolled by arrows.
    bool MultiLine() const { return m_multiLine; }
    void setMultiLine(bool multiLine);
    /// Whether hints are shown, as they are at first.
    bool ShowHint() const { return m_showHint; }
    void setShowHint(bool show);

    /// Hot-tracking and glyphs are objects whose properties are set one by one.
    TExtHottrack *Hottrack() const { return m_hottrack; }
    TExtGlyphs *TabGlyphs() const { return m_glyphs; }
    /// Assigning other objects changes nothing.
    void SetHottrack(const TExtHottrack *) {}
    void SetTabGlyphs(const TExtGlyphs *) {}

    /// The colours of the selected tab and of the others; clNone lets the background show through.
    TColor TabActiveColor() const { return m_activeColor; }
    void setTabActiveColor(TColor color);
    TColor TabInactiveColor() const { return m_inactiveColor; }
    void setTabInactiveColor(TColor color);
    /// The fonts of the selected tab and of the others, with their colours. The control's own font is not
    /// used for captions.
    TTabFont *TabActiveFont() const { return m_activeFont; }
    TTabFont *TabInactiveFont() const { return m_inactiveFont; }
    void setTabActiveFont(const QFont &font) { m_activeFont->setFont(font); }
    void setTabInactiveFont(const QFont &font) { m_inactiveFont->setFont(font); }

    /// The size of a tab as it is read, on any side of the control, in pixels up to 65535; 0 makes tabs as
    /// large as their captions with their glyphs. Captions that are wrapped in tabs of a given width make
    /// tabs as high as the one with the most lines. Vertical positions know no 0 when they are
    /// chosen: the height becomes 35 then, and the width 70.
    int TabHeight() const { return m_tabHeight; }
    void setTabHeight(int height);
    int TabWidth() const { return m_tabWidth; }
    void setTabWidth(int width);

    /// The hints that are shown below tabs: one line a tab, or one line a page in a page control. Tabs beyond
    /// the lines have none. A page control counts tabs and takes the line of the page, so that behind hidden
    /// tabs a list that ends too early is an EStringListError, which goes to the exception display.
    const QStringList &TabHints() const { return m_tabHints; }
    void setTabHints(const QStringList &hints);

    /// Setting another position than tabPosTop ends the button style, and the button style moves the tabs to
    /// the top.
    TExtTabPosition TabPosition() const { return m_tabPosition; }
    void setTabPosition(TExtTabPosition position);
    TExtTabStyle TabStyle() const { return m_tabStyle; }
    void setTabStyle(TExtTabStyle style);

    /// Captions are broken at blanks where they find no room.
    bool TabWordWrap() const { return m_wordWrap; }
    void setTabWordWrap(bool wordWrap);

    /// Scales the sizes of tabs and fonts by m / d.
    void ChangeScale(int m, int d);

    // What stands for the window of the tab control.

    /// The style word that the properties ask for, and the one that is in force (TabStyleWord.h).
    std::uint32_t CreateParams() const;
    std::uint32_t WindowStyle() const { return m_style; }
    /// The sizes of a tab along the strip and across it, which position and TabHeight and TabWidth give.
    int ItemWidth() const { return m_itemWidth; }
    int ItemHeight() const { return m_itemHeight; }
    /// The font that tabs are sized by: of both fonts the one with the wider "W", the active one when both
    /// are the same.
    QFont SizingFont() const;
    /// Whether the window exists, which it does from when it is first shown.
    bool HandleAllocated() const { return testAttribute(Qt::WA_WState_Created); }
    /// Whether the system's common controls are newer than version 4.48; false where there are none.
    static bool IsNewComCtl();

    // Geometry.

    /// The tab at a point; -1 for none, and while the window does not exist.
    virtual int GetTabNumber(TPoint point) const;
    virtual TRect GetTabRect(int tab) const;
    /// The page area, which has the control's colour.
    virtual TRect GetSheetRect() const;
    /// Where pages are.
    TRect DisplayRect() const;
    /// All places at once.
    const TStripLayout &Strip() const;

    // Painting.

    /// Between BeginUpdate() and EndUpdate(), which may be nested, nothing is painted and the last picture
    /// stays; then the control is painted once.
    virtual void BeginUpdate();
    virtual void EndUpdate();
    void Invalidate() { update(); }
    /// What a handler of OnDrawTab draws with; null outside of draw requests. Its brush and its background
    /// have the colour of the tab, its pen that of the caption.
    QPainter *Canvas() const { return m_canvas; }

    // For handlers of OnDrawTab; outside of a draw request they do nothing.

    /// Draws caption and glyph as they are drawn without a handler.
    virtual void DefaultDrawTab(int index, const TRect &rect, TOwnerDrawState state);
    /// Draws a caption on the canvas and returns where a glyph that belongs to it goes: its top left corner,
    /// or its top right one in a right-to-left control.
    virtual TPoint TabTextOut(const TRect &rect, TPoint offset, const QString &caption, TAlignment alignment,
                              bool disabled);
    /// The image of the glyph list that a page or tab shows.
    virtual int GetGlyphIndex(int index) const;

    // Keyboard and help.

    /// Selects the tab whose accelerator the key is. Returns whether there is one, enabled or not.
    bool CMDialogChar(QChar key);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// A tab is to be drawn. `Index` is that of the page or tab, `RectFg` is for the content, `RectBg` has
    /// the tab's colour already.
    void OnDrawTab(QWidget *Control, int Index, bool ActiveTab, const Zelmar01::TRect &RectFg,
                   const Zelmar01::TRect &RectBg, Zelmar01::TOwnerDrawState State);
    /// The page area has been given its colour, which is the painter's background colour too; `CurrPage` is
    /// the selected page or tab. The painter is clipped to what is being painted.
    void OnDrawBkgndInside(QWidget *Control, QPainter *DC, int CurrPage, const Zelmar01::TRect &RectBg);
    /// The area around page area and tabs has been given the parent's colour, which is the painter's
    /// background colour too.
    void OnDrawBkgndOutside(QWidget *Control, QPainter *DC, const QRegion &RgnBg);
    /// The user, or a writer of the selection, wants to change it.
    void OnChanging(QWidget *Sender, bool &AllowChange);
    void OnChange(QWidget *Sender);

protected:
    explicit TExtCustomTab(QWidget *parent);

    /// The sizes of the page area of a control that nothing has given a size.
    static constexpr QSize UsualPage{280, 160}, LeastPage{40, 20};

    // For the owners of the captions. An index is that of a page, or of a tab where there are no pages.

    virtual int indexOfTab(int tab) const = 0;
    virtual QString captionOf(int index) const = 0;
    /// The widget that help on a tab is about.
    virtual QWidget *helpItem(int tab) const = 0;
    /// Pages take their new place.
    virtual void realign() = 0;
    /// What the page area wants.
    virtual QSize pageSizeHint(bool minimum) const = 0;

    /// Tabs were added, moved or removed; `selected` is where the selection is now. Captions and states may
    /// have changed too.
    void tabsChanged(int selected);
    /// A tab's caption or state was changed.
    void tabChanged(int tab);
    /// The selection moves to another tab, without any question.
    void showSelected(int tab);
    bool canChange();
    void endLoading();

    // Drawing.

    virtual void CNDrawTab(const TTabDrawRequest &request);
    virtual void DrawTab(int index, bool activeTab, const TRect &rectFg, const TRect &rectBg,
                         TOwnerDrawState state);
    virtual void FillTabBG(QPainter &painter, bool active, const TRect &rect);
    virtual void TabFontChanged();
    virtual void HottrackChange(int oldTab, int newTab);
    /// Passes a help request on. Returns whether there was help.
    virtual bool WMHelp(THelpRequest &request);

    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    /// Every colour as it is painted.
    struct TPaintColors
    {
        QColor Ground[2], Text[2], HotText[2]; // [1] for the selected tab
        QColor Disabled[2], Embossed, Frame, Page, Outside;
    };

    // For forms.
    QColor shownColor() const { return colors().Page; }
    void resetAlign() { setAlign(TPlacement::alNone); }
    void resetAnchors() { setAnchors(TPlacement::akLeft | TPlacement::akTop); }
    void resetColor();
    void resetParentColor() { setParentColor(true); }
    bool hottrackEnabled() const { return m_hottrack->Enabled(); }
    QColor shownHottrackActive() const { return m_hottrack->TabActiveColor().Resolved(palette()); }
    void resetHottrack_TabActiveColor() { m_hottrack->setTabActiveColor(clHighlight); }
    QColor shownHottrackInactive() const { return m_hottrack->TabInactiveColor().Resolved(palette()); }
    void resetHottrack_TabInactiveColor() { m_hottrack->setTabInactiveColor(clHighlight); }
    QColor shownTabActiveColor() const { return m_activeColor.Resolved(palette()); }
    void resetTabActiveColor() { setTabActiveColor(clBtnFace); }
    QFont tabActiveFontParts() const { return m_activeFont->SetParts(); }
    void resetTabActiveFont() { m_activeFont->setFont(QFont()); }
    QColor shownActiveFontColor() const { return m_activeFont->Color().Resolved(palette()); }
    void resetTabActiveFont_Color() { m_activeFont->setColor(clWindowText); }
    QPixmap glyph() const { return m_glyphs->Glyph(); }
    void resetTabGlyphs_Glyph() { m_glyphs->setGlyph({}); }
    int numGlyphs() const { return m_glyphs->NumGlyphs(); }
    TExtGlyphPosition glyphPosition() const { return m_glyphs->Position(); }
    int glyphSpacing() const { return m_glyphs->Spacing(); }
    void resetTabGlyphs_Spacing() { m_glyphs->setSpacing(5); }
    QColor glyphTransparentColor() const { return m_glyphs->TransparentColor().Resolved(palette()); }
    void resetTabGlyphs_TransparentColor() { m_glyphs->setTransparentColor(clFuchsia); }
    QColor shownTabInactiveColor() const { return m_inactiveColor.Resolved(palette()); }
    void resetTabInactiveColor() { setTabInactiveColor(DefaultInactiveColor); }
    QFont tabInactiveFontParts() const { return m_inactiveFont->SetParts(); }
    void resetTabInactiveFont() { m_inactiveFont->setFont(QFont()); }
    QColor shownInactiveFontColor() const { return m_inactiveFont->Color().Resolved(palette()); }
    void resetTabInactiveFont_Color() { m_inactiveFont->setColor(clWindowText); }
    void resetTabPosition() { setTabPosition(tabPosTop); }
    void resetTabStyle() { setTabStyle(tabStDefault); }

public:
    // The writers that forms use for the parts of objects.
    void setHottrack_Enabled(bool enabled) { m_hottrack->setEnabled(enabled); }
    void setHottrack_TabActiveColor(TColor color) { m_hottrack->setTabActiveColor(color); }
    void setHottrack_TabInactiveColor(TColor color) { m_hottrack->setTabInactiveColor(color); }
    void setTabActiveFont_Color(TColor color) { m_activeFont->setColor(color); }
    void setTabInactiveFont_Color(TColor color) { m_inactiveFont->setColor(color); }
    void setTabGlyphs_Glyph(const QPixmap &glyph) { m_glyphs->setGlyph(glyph); }
    void setTabGlyphs_NumGlyphs(int count) { m_glyphs->setNumGlyphs(count); }
    void setTabGlyphs_Position(TExtGlyphPosition position) { m_glyphs->setPosition(position); }
    void setTabGlyphs_Spacing(int spacing) { m_glyphs->setSpacing(spacing); }
    void setTabGlyphs_TransparentColor(TColor color) { m_glyphs->setTransparentColor(color); }

private:
    // Geometry.
    bool isVertical() const { return IsVertical(m_tabPosition); }
    void layoutChanged();
    void scrollTo(int firstTab);
    void bringSelectedIntoSight();
    void placeArrows();

    // Painting.
    void paintBuffer(const QRegion &region, double ratio);
    void keepPicture(const QRegion &region);
    void paintAll(QPainter &painter, const QRegion &region, bool inMemory);
    void eraseBackground(QPainter &painter, bool inMemory);
    void drawPageFrame(QPainter &painter) const;
    void drawTabFrame(QPainter &painter, int tab) const;
    void drawFocus(QPainter &painter) const;
    const TPaintColors &colors() const;
    void forgetColors();
    TTabContent contentOf(TOwnerDrawState state) const;
    /// Runs what may raise while the control is painted or the mouse moves.
    template<class Work>
    void guarded(Work &&work)
    {
        try {
            work();
        } catch (...) {
            report(std::current_exception());
        }
    }
    void report(const std::exception_ptr &error);

    // Mouse, hints, keyboard.
    void mouseMoved(QPoint point);
    void hitTest(QPoint point);
    void mouseLeft();
    void forgetMouse();
    bool showHint(const QHelpEvent &event);
    bool hasHelp(QPoint point) const;
    void cancelHint();
    void grabAccelerators();
    int focusTab() const;
    int rowStep(int key) const;

    static constexpr TColor DefaultInactiveColor{0x00A4A0A0};

    bool m_loading = true;
    TPlacement *m_placement;
    TExtHottrack *m_hottrack;
    TExtGlyphs *m_glyphs;
    TTabFont *m_activeFont, *m_inactiveFont;
    TColor m_color = clWindow;
    bool m_parentColor = true, m_multiLine = false, m_showHint = true, m_wordWrap = false;
    TColor m_activeColor = clBtnFace;
    TColor m_inactiveColor = DefaultInactiveColor;
    int m_tabHeight = 0, m_tabWidth = 0;
    int m_itemWidth = 0, m_itemHeight = 0;
    QStringList m_tabHints;
    TExtTabPosition m_tabPosition = tabPosTop;
    TExtTabStyle m_tabStyle = tabStDefault;
    std::uint32_t m_style = 0;

    int m_selected = -1;
    int m_firstTab = 0;
    mutable std::optional<TStripLayout> m_strip;
    TTabArrows *m_arrows = nullptr;

    QPainter *m_canvas = nullptr;
    bool m_canvasActive = false;
    QImage m_buffer;
    bool m_bufferIsCurrent = false;
    bool m_firstPaint = true, m_hotPaint = false;
    int m_eraseLock = 0, m_paintLock = 0;
    mutable std::optional<TPaintColors> m_colors;
    std::unique_ptr<TCaptionPictures> m_captions;
    std::set<std::string> m_reported;

    bool m_mouseInside = false;
    int m_lastHintTab = -1;
    QString m_savedHint;
    std::unique_ptr<TTabHint> m_hintWindow;
    QMap<int, QChar> m_accelerators; // by the number of the shortcut
    int m_wheel = 0;
};

} // namespace Zelmar01
