#include <Zelmar01/controls/LabelURL.h>

#include <Zelmar01/controls/ShellOpen.h>
#include <Zelmar01/core/ExceptionDisplay.h>

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QToolTip>

#include <array>

namespace Zelmar01 {

namespace {

constexpr std::array prefixes{"http://",   "file://",        "ftp://", "mailto:", "",
                              "https:",    "gopher://",      "news:",  "newsrc:", "nntp://",
                              "telnet://", "view-source://", "wais://"};

constexpr std::array showStates{10, 0, 3, 6, 9, 5, 3, 2, 7, 8, 4, 1};

constexpr int focusMargin = 2;

bool isActive()
{
    return QApplication::activeWindow() != nullptr;
}

} // namespace

TLabelURL::TLabelURL(QWidget *parent) : TCustomLabel(parent)
{
    setFont_Color(clBlue);
    setCursor(Qt::PointingHandCursor);
    // A click must not take the focus from a field that may refuse to be left.
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    setBuddy(this);
    setMargin(focusMargin);
}

void TLabelURL::setColorURL(TColor color)
{
    m_colorURL = color;
    update();
}

void TLabelURL::setColorClick(TColor color)
{
    m_colorClick = color;
    update();
}

void TLabelURL::setDefautColor(TColor color)
{
    m_defautColor = color;
    setFont_Color(color);
}

void TLabelURL::setURL(const QString &url)
{
    m_url = url;
}

QString TLabelURL::Address() const
{
    if (m_urlType >= prefixes.size())
        return {};
    const QLatin1String prefix(prefixes[m_urlType]);
    return m_url.toLower().contains(prefix) ? m_url : prefix + m_url;
}

int TLabelURL::ShowCommandtoInt(TShowCommand command)
{
    return showStates[command < showStates.size() ? command : scShowDefault];
}

void TLabelURL::Click()
{
    const QPointer<TLabelURL> self = this;
    emit OnClick(this);
    if (self && m_urlType < prefixes.size())
        ShellOpen(Address(), ShowCommandtoInt(m_showCommand));
}

void TLabelURL::press()
{
    ShowingExceptions([this] { Click(); });
}

void TLabelURL::copyAddress()
{
    QApplication::clipboard()->setText(Address());
}

void TLabelURL::MouseEnter()
{
    if (isActive())
        setFont_Color(m_colorURL);
}

void TLabelURL::MouseClick()
{
    if (isActive())
        setFont_Color(m_colorClick);
}

void TLabelURL::MouseLeave()
{
    setFont_Color(m_defautColor);
}

void TLabelURL::CMMouseEnter()
{
    MouseEnter();
}

void TLabelURL::CMMouseLeave()
{
    MouseLeave();
}

void TLabelURL::CMMouseClick()
{
    setFont_Color(m_colorClick);
}

bool TLabelURL::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        // An address that looks like a text with mark-up stays an address.
        const auto text = QStringLiteral("<p>%1</p>").arg(Address().toHtmlEscaped());
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), text, this);
        return true;
    }
    return TCustomLabel::event(event);
}

void TLabelURL::enterEvent(QEnterEvent *event)
{
    TCustomLabel::enterEvent(event);
    CMMouseEnter();
}

void TLabelURL::leaveEvent(QEvent *event)
{
    TCustomLabel::leaveEvent(event);
    CMMouseLeave();
}

void TLabelURL::mousePressEvent(QMouseEvent *event)
{
    m_isPressed = event->button() == Qt::LeftButton;
    event->setAccepted(m_isPressed);
}

void TLabelURL::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && std::exchange(m_isPressed, false) &&
        rect().contains(event->position().toPoint()))
        press();
}

void TLabelURL::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy)) {
        copyAddress();
        return;
    }
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (!event->isAutoRepeat())
            press();
        return;
    default:
        TCustomLabel::keyPressEvent(event);
    }
}

void TLabelURL::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(actions());
    menu->addSeparator();
    menu->addAction(tr("&Ouvrir le lien"), this, &TLabelURL::press);
    menu->addAction(tr("&Copier l'adresse"), this, &TLabelURL::copyAddress);
    menu->popup(event->reason() == QContextMenuEvent::Keyboard ? mapToGlobal(rect().bottomLeft())
                                                               : event->globalPos());
}

void TLabelURL::paintEvent(QPaintEvent *event)
{
    TCustomLabel::paintEvent(event);
    if (!hasFocus())
        return;
    // Not the style's frame: many styles draw none unless the focus came with a key, or a faint one.
    QPainter painter(this);
    painter.setPen(captionColor());
    painter.drawRect(captionBounds().adjusted(-2, -1, 1, 0) & rect().adjusted(0, 0, -1, -1));
}

} // namespace Zelmar01
