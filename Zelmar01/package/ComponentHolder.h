#pragma once

#include <Zelmar01/core/Component.h>
#include <Zelmar01/core/ExceptionDisplay.h>

#include <QIcon>
#include <QLocale>
#include <QWidget>

namespace Zelmar01 {

/// What stands on a form for a component without a window, since a form can only make widgets: it owns the
/// component, has the same published properties and events, and hands the component out to code. In a form
/// designer it is an icon; anywhere else it is never visible and takes no room.
///
/// The component is loading until the form is polished. In a form designer an error in a property always goes
/// to the exception display, and the property keeps its value.
class TComponentHolder : public QWidget
{
    Q_OBJECT
    // Of the widget only its place on the form means anything.
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled DESIGNABLE false STORED false)
    Q_PROPERTY(QSizePolicy sizePolicy READ sizePolicy WRITE setSizePolicy DESIGNABLE false STORED false)
    Q_PROPERTY(QSize minimumSize READ minimumSize WRITE setMinimumSize DESIGNABLE false STORED false)
    Q_PROPERTY(QSize maximumSize READ maximumSize WRITE setMaximumSize DESIGNABLE false STORED false)
    Q_PROPERTY(QSize sizeIncrement READ sizeIncrement WRITE setSizeIncrement DESIGNABLE false STORED false)
    Q_PROPERTY(QSize baseSize READ baseSize WRITE setBaseSize DESIGNABLE false STORED false)
    Q_PROPERTY(QPalette palette READ palette WRITE setPalette DESIGNABLE false STORED false)
    Q_PROPERTY(QFont font READ font WRITE setFont DESIGNABLE false STORED false)
    Q_PROPERTY(QCursor cursor READ cursor WRITE setCursor DESIGNABLE false STORED false)
    Q_PROPERTY(bool mouseTracking READ hasMouseTracking WRITE setMouseTracking DESIGNABLE false STORED false)
    Q_PROPERTY(
        bool tabletTracking READ hasTabletTracking WRITE setTabletTracking DESIGNABLE false STORED false)
    Q_PROPERTY(
        Qt::FocusPolicy focusPolicy READ focusPolicy WRITE setFocusPolicy DESIGNABLE false STORED false)
    Q_PROPERTY(Qt::ContextMenuPolicy contextMenuPolicy READ contextMenuPolicy WRITE setContextMenuPolicy
                   DESIGNABLE false STORED false)
    Q_PROPERTY(bool acceptDrops READ acceptDrops WRITE setAcceptDrops DESIGNABLE false STORED false)
    Q_PROPERTY(QString toolTip READ toolTip WRITE setToolTip DESIGNABLE false STORED false)
    Q_PROPERTY(
        int toolTipDuration READ toolTipDuration WRITE setToolTipDuration DESIGNABLE false STORED false)
    Q_PROPERTY(QString statusTip READ statusTip WRITE setStatusTip DESIGNABLE false STORED false)
    Q_PROPERTY(QString whatsThis READ whatsThis WRITE setWhatsThis DESIGNABLE false STORED false)
    Q_PROPERTY(
        QString accessibleName READ accessibleName WRITE setAccessibleName DESIGNABLE false STORED false)
    Q_PROPERTY(QString accessibleDescription READ accessibleDescription WRITE setAccessibleDescription
                   DESIGNABLE false STORED false)
    Q_PROPERTY(Qt::LayoutDirection layoutDirection READ layoutDirection WRITE setLayoutDirection
                   DESIGNABLE false STORED false)
    Q_PROPERTY(bool autoFillBackground READ autoFillBackground WRITE setAutoFillBackground
                   DESIGNABLE false STORED false)
    Q_PROPERTY(QString styleSheet READ styleSheet WRITE setStyleSheet DESIGNABLE false STORED false)
    Q_PROPERTY(QLocale locale READ locale WRITE setLocale DESIGNABLE false STORED false)
    Q_PROPERTY(Qt::InputMethodHints inputMethodHints READ inputMethodHints WRITE setInputMethodHints
                   DESIGNABLE false STORED false)
public:
    /// What a form designer shows.
    void SetIcon(const QIcon &icon);
    bool IsDesigning() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    void setVisible(bool visible) override;

protected:
    explicit TComponentHolder(QWidget *parent);

    /// Begins to pass on the events of the component, which this holder owns.
    void hold(TComponent *component);

    /// Runs what a property or a connection of a form asks for: raises to code, and to nobody else.
    template<class Work>
    void doing(Work &&work)
    {
        if (IsDesigning())
            ShowingExceptions(std::forward<Work>(work));
        else
            work();
    }

    // An event of the component counts as assigned from the first connection of the holder's signal on.
    void connectNotify(const QMetaMethod &signal) override;
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    TComponent *m_component = nullptr;
    QIcon m_icon;
};

} // namespace Zelmar01
