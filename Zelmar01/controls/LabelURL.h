#pragma once

#include <Zelmar01/controls/ControlColors.h>
#include <Zelmar01/controls/CustomLabel.h>

namespace Zelmar01 {

/// A label that is a link: it changes its colour under the mouse, and opens its address on a click, on Enter
/// or on the space bar with the program that the system has for it (see ShellOpen.h).
///
/// It is reached with the tab key, or with Alt and the underlined character of its caption. Its tool tip is
/// the address, unless it has one of its own. Its menu opens the link and copies the address, below the
/// actions that the host gives it.
class TLabelURL : public TCustomLabel
{
    Q_OBJECT
    Q_PROPERTY(QColor ColorURL READ shownColorURL WRITE setColorURL RESET resetColorURL)
    Q_PROPERTY(QColor ColorClick READ shownColorClick WRITE setColorClick RESET resetColorClick)
    Q_PROPERTY(QColor DefautColor READ shownDefautColor WRITE setDefautColor RESET resetDefautColor)
    Q_PROPERTY(TURLType URLType READ URLType WRITE setURLType RESET resetURLType)
    Q_PROPERTY(QString URL READ URL WRITE setURL)
    Q_PROPERTY(TShowCommand ShowCommand READ ShowCommand WRITE setShowCommand)
public:
    /// The kind of address, and what is put in front of one that does not hold it: "http://" for utHttp and
    /// so on, nothing for utNone, and "https:" without slashes for utHttps.
    enum TURLType : unsigned char {
        utHttp,
        utFile,
        utFTP,
        utMailTo,
        utNone,
        utHttps,
        utGopher,
        utNews,
        utNewsRc,
        utNntp,
        utTelNet,
        utViewSource,
        utWais
    };
    Q_ENUM(TURLType)
    /// How the window of the program that opens the address is to be shown, on systems that know of it.
    enum TShowCommand : unsigned char {
        scShowDefault,
        scHide,
        scMaximize,
        scMinimize,
        scRestore,
        scShow,
        scShowMaximized,
        scShowMinimized,
        scShowMinNoActive,
        scShowNa,
        scShowNoActivate,
        scShowNormal
    };
    Q_ENUM(TShowCommand)

    explicit TLabelURL(QWidget *parent = nullptr);

    /// The colour under the mouse, red at first.
    TColor ColorURL() const { return m_colorURL; }
    void setColorURL(TColor color);
    /// The colour that MouseClick gives, navy at first. A click itself changes no colour.
    TColor ColorClick() const { return m_colorClick; }
    void setColorClick(TColor color);
    /// The colour when the mouse is elsewhere, blue at first; setting it makes it the font colour.
    TColor DefautColor() const { return m_defautColor; }
    void setDefautColor(TColor color);

    TURLType URLType() const { return m_urlType; }
    void setURLType(TURLType type) { m_urlType = type; }
    QString URL() const { return m_url; }
    void setURL(const QString &url);
    TShowCommand ShowCommand() const { return m_showCommand; }
    void setShowCommand(TShowCommand command) { m_showCommand = command; }

    /// What a click opens: the URL, behind the prefix of its type unless the prefix occurs anywhere in it, in
    /// letters of any case. Empty for a type that there is not, of which nothing is opened.
    QString Address() const;
    /// The show-window value of a show command; 10, the program's own choice, for one that there is not.
    static int ShowCommandtoInt(TShowCommand command);

    /// Fires OnClick, then opens the address. Nothing tells whether it could be opened.
    virtual void Click();

    /// Give the label the colour of the event. The first two do so only while a window of the application is
    /// active.
    void MouseEnter();
    void MouseClick();
    void MouseLeave();

signals:
    void OnClick(QObject *sender);

protected:
    /// What the mouse does on coming and going.
    virtual void CMMouseEnter();
    virtual void CMMouseLeave();
    /// Belongs to a message that no label is ever sent: nothing calls it.
    virtual void CMMouseClick();

    void resetFont_Color() override { setFont_Color(m_defautColor); }
    bool event(QEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void press();
    void copyAddress();

    QColor shownColorURL() const { return m_colorURL.Resolved(palette()); }
    QColor shownColorClick() const { return m_colorClick.Resolved(palette()); }
    QColor shownDefautColor() const { return m_defautColor.Resolved(palette()); }
    void resetColorURL() { setColorURL(clRed); }
    void resetColorClick() { setColorClick(clNavy); }
    void resetDefautColor() { setDefautColor(clBlue); }
    void resetURLType() { setURLType(utHttp); }

    TColor m_colorURL = clRed, m_colorClick = clNavy, m_defautColor = clBlue;
    TURLType m_urlType = utHttp;
    TShowCommand m_showCommand = scShowDefault;
    QString m_url;
    bool m_isPressed = false;
};

using TURLType = TLabelURL::TURLType;
using TShowCommand = TLabelURL::TShowCommand;
using enum TLabelURL::TURLType;
using enum TLabelURL::TShowCommand;

} // namespace Zelmar01
