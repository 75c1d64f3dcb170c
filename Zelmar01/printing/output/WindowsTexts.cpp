#include "WindowsTexts.h"

#include "PrintTexts.h"

#include <Zelmar01/core/Translation.h>

#include <array>

namespace Zelmar01 {

namespace {

std::wstring wideText(std::string_view text, UINT codePage)
{
    const auto size = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int length = MultiByteToWideChar(codePage, 0, text.data(), size, wide.data(), size);
    wide.resize(static_cast<std::size_t>(length));
    return wide;
}

std::string utf8Text(std::wstring_view text)
{
    const auto size = static_cast<int>(text.size());
    std::string narrow(text.size() * 3, '\0');
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(),
                                           static_cast<int>(narrow.size()), nullptr, nullptr);
    narrow.resize(static_cast<std::size_t>(length));
    return narrow;
}

std::string messageOf(DWORD code)
{
    constexpr DWORD french = MAKELANGID(LANG_FRENCH, SUBLANG_FRENCH);
    std::array<wchar_t, 512> text;
    DWORD length = 0;
    for (const DWORD language : {french, DWORD{0}})
        if (!length)
            length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                                    language, text.data(), static_cast<DWORD>(text.size()), nullptr);
    const std::wstring_view message(text.data(), length);
    const auto end = message.find_last_not_of(L" .\r\n");
    return end == message.npos ? Filled(Translate("Zelmar01", "erreur %1"), {std::to_string(code)})
                               : utf8Text(message.substr(0, end + 1));
}

std::string remedyFor(DWORD code)
{
    switch (code) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_UNIT:
    case ERROR_NOT_READY:
    case ERROR_GEN_FAILURE:
    case ERROR_DEV_NOT_EXIST:
    case ERROR_DEVICE_NOT_CONNECTED:
        return Translate(
            "Zelmar01",
            "vérifier que l'imprimante est branchée et allumée, et le réglage du port (ZELMAR01_PORTS)");
    case ERROR_ACCESS_DENIED:
        return Translate(
            "Zelmar01",
            "fermer les autres programmes qui utilisent cette imprimante, ou demander le droit d'imprimer");
    case ERROR_SHARING_VIOLATION:
    case ERROR_BUSY:
        return PrintTexts::PortInUse();
    case ERROR_TIMEOUT:
    case ERROR_SEM_TIMEOUT:
    case ERROR_OUT_OF_PAPER:
        return PrintTexts::LookAtPrinter();
    case ERROR_INVALID_PRINTER_NAME:
    case ERROR_PRINTER_NOT_FOUND:
    case ERROR_PRINTER_DELETED:
        return PrintTexts::ChooseListedPrinter();
    case RPC_S_SERVER_UNAVAILABLE:
    case RPC_S_CALL_FAILED:
    case RPC_S_CALL_FAILED_DNE:
    case ERROR_SERVICE_NOT_ACTIVE:
        return Translate("Zelmar01", "démarrer le service « Spouleur d'impression »");
    default:
        return {};
    }
}

} // namespace

std::optional<std::string> AnsiText(const std::string &text)
{
    const auto wide = wideText(text, CP_UTF8);
    // A code page that holds every character knows neither of the two precautions.
    const bool complete = GetACP() == CP_UTF8;
    BOOL lost = FALSE;
    std::string narrow(wide.size() * 4, '\0');
    const int length = WideCharToMultiByte(
        CP_ACP, complete ? 0 : WC_NO_BEST_FIT_CHARS, wide.data(), static_cast<int>(wide.size()),
        narrow.data(), static_cast<int>(narrow.size()), nullptr, complete ? nullptr : &lost);
    if (lost)
        return std::nullopt;
    narrow.resize(static_cast<std::size_t>(length));
    return narrow;
}

std::string Utf8Text(const char *text)
{
    return text ? utf8Text(wideText(text, CP_ACP)) : std::string{};
}

TSystemCause CauseFromWindows(DWORD code, const std::string &subject)
{
    return {static_cast<int>(code), subject + " : " + messageOf(code), remedyFor(code)};
}

TSystemCause UnspeakableName(const std::string &name)
{
    return {ERROR_NO_UNICODE_TRANSLATION,
            name + " : " + Translate("Zelmar01", "nom que Windows ne peut pas écrire dans sa page de codes"),
            Translate("Zelmar01", "donner un nom sans caractères spéciaux")};
}

} // namespace Zelmar01
