#include <Zelmar01/controls/OwnFont.h>

#include <QApplication>
#include <QEvent>

namespace Zelmar01 {

namespace {

// The font with each of its parts set, so that none comes from a parent.
QFont whole(const QFont &font)
{
    QFont own(font.families(), -1, font.weight());
    own.setStyle(font.style());
    if (font.pixelSize() > 0)
        own.setPixelSize(font.pixelSize());
    else
        own.setPointSizeF(font.pointSizeF());
    own.setWeight(font.weight());
    own.setStretch(font.stretch());
    own.setUnderline(font.underline());
    own.setOverline(font.overline());
    own.setStrikeOut(font.strikeOut());
    own.setFixedPitch(font.fixedPitch());
    own.setKerning(font.kerning());
    own.setCapitalization(font.capitalization());
    own.setLetterSpacing(font.letterSpacingType(), font.letterSpacing());
    own.setWordSpacing(font.wordSpacing());
    own.setHintingPreference(font.hintingPreference());
    own.setStyleName(font.styleName());
    return own;
}

} // namespace

TOwnFont::TOwnFont(QWidget *control) : QObject(control)
{
    control->installEventFilter(this);
    giveFont();
}

void TOwnFont::setParentFont(bool parentFont)
{
    m_parentFont = parentFont;
    parentFont ? control().setFont(QFont()) : giveFont();
}

bool TOwnFont::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ApplicationFontChange && !m_parentFont && control().font() == m_given)
        giveFont();
    return QObject::eventFilter(watched, event);
}

void TOwnFont::giveFont()
{
    m_given = whole(QApplication::font(&control()));
    control().setFont(m_given);
}

} // namespace Zelmar01
