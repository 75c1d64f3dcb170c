#include <Zelmar01/printing/PrnCodeBox.h>

#include <Zelmar01/core/Windows1252.h>
#include <Zelmar01/printing/ControlCodes.h>

#include <QContextMenuEvent>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

QString hexadecimal(unsigned char byte)
{
    const char c = static_cast<char>(byte);
    return CodeText(TCodeNotation::Hexadecimal, {&c, 1});
}

} // namespace

TPrnCodeBox::TPrnCodeBox(QWidget *parent) : QLineEdit(parent) {}

void TPrnCodeBox::ShowCode(TCodeNotation notation, std::string_view code)
{
    m_notation = notation;
    setText(CodeText(notation, code));
    setCursorPosition(0);
}

void TPrnCodeBox::contextMenuEvent(QContextMenuEvent *event)
{
    auto *const menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (m_notation == TCodeNotation::Character) {
        menu->addSeparator();
        addCharacters(*menu, tr("Insérer NUL à SI"), 0x00, 0x0F);
        addCharacters(*menu, tr("Insérer DLE à US"), 0x10, 0x1F);
        addCharacters(*menu, tr("Insérer un autre caractère"), 0x20, 0xFF);
    }
    menu->popup(event->globalPos());
}

void TPrnCodeBox::addCharacters(QMenu &menu, const QString &title, int first, int last)
{
    auto *const characters = menu.addMenu(title);
    for (int value = first; value <= last; ++value) {
        const auto byte = static_cast<unsigned char>(value);
        const auto sign = CharacterOfByte(byte);
        if (sign == QChar(static_cast<char16_t>(CharFromWindows1252(byte))))
            continue;
        const auto name = ControlCodeName(byte);
        characters->addAction(u"%1 %2\t%3"_s.arg(hexadecimal(byte), QLatin1StringView(name), sign), this,
                              [this, sign] { insert(sign); });
    }
}

void TPrnCodeBox::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    emit OnEnter();
}

void TPrnCodeBox::keyPressEvent(QKeyEvent *event)
{
    QLineEdit::keyPressEvent(event);
    const auto typed = event->text();
    const bool hasControlCode = event->modifiers().testFlag(Qt::ControlModifier) &&
                                event->key() >= Qt::Key_At && event->key() <= Qt::Key_Underscore &&
                                typed.size() == 1 && typed[0] < u' ';
    if (event->isAccepted() || !hasControlCode || m_notation != TCodeNotation::Character)
        return;
    insert(CharacterOfByte(static_cast<unsigned char>(typed[0].unicode())));
    event->accept();
}

} // namespace Zelmar01
