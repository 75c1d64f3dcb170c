#include <Zelmar01/core/MessageBoxes.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>

#include <utility>

namespace Zelmar01 {

namespace {

TMessageBox &currentBox()
{
    static TMessageBox box;
    return box;
}

} // namespace

TMessageBox SetMessageBox(TMessageBox box)
{
    return std::exchange(currentBox(), std::move(box));
}

TMsgDlgBtn MessageDlg(const QString &text, TMsgDlgType type, TMsgDlgButtons buttons)
{
    const auto box = currentBox(); // a copy: it may replace itself
    if (!box)
        throw EInvalidOperation(
            Filled(Translate("Zelmar01",
                             "Aucune boîte de message : l'application hôte doit appeler UseMessageBoxes() ou "
                             "SetMessageBox(). Message : %1"),
                   {text.toStdString()}));
    return box(text, type, buttons);
}

} // namespace Zelmar01
