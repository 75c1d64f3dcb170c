#include "CodesDialog.h"

#include <Zelmar01/core/Windows1252Text.h>
#include <Zelmar01/printing/PrnCodeBox.h>

#include <QClipboard>
#include <QLabel>
#include <QMenu>
#include <QSet>

using namespace Zelmar01;
using namespace Qt::StringLiterals;
using namespace std::string_literals;

namespace {

/// The 256 bytes, in codes of 20.
TPrinterCodeSet allBytes()
{
    TPrinterCodeSet set;
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    for (std::size_t i = 0; i * TPrinterCode::MaxLength < bytes.size(); ++i)
        set.*PrinterCodeFields()[i].Code =
            TPrinterCode(std::string_view(bytes).substr(i * TPrinterCode::MaxLength));
    return set;
}

} // namespace

TEST_F(CodesDialogTest, showsACodeInThreeNotations)
{
    const auto before = m_codes;
    EXPECT_TRUE(execute(ptEpson, [](CodesDialog dialog) {
        EXPECT_EQ(dialog.NotationInForce(), hexadecimal);
        EXPECT_EQ(dialog.Box("Ini").text(), u"1B,40,1B,21"_s);
        dialog.Click(dialog.Notation(decimal));
        EXPECT_EQ(dialog.Box("Ini").text(), u"27,64,27,33"_s);
        dialog.Click(dialog.Notation(character));
        EXPECT_EQ(dialog.Box("Ini").text(), u"←@←!"_s);
        EXPECT_EQ(dialog.Box("cRed").text(), u" "_s);
        dialog.Click("btnOK");
    }));
    EXPECT_EQ(m_codes, before);
}

TEST_F(CodesDialogTest, opensOnEachType)
{
    m_codes[ptPlain].Back = TPrinterCode("\5"); // which has no item
    const std::pair<TPrinterType, int> items[] = {{ptHPPCL, 0},  {ptEpson, 1}, {ptIBM, 2},
                                                  {ptPlain, -1}, {ptUser1, 3}, {ptTiroir, 4}};
    auto expected = m_codes;
    for (const auto &[type, item] : items) {
        EXPECT_TRUE(execute(type, [shown = item](CodesDialog dialog) {
            EXPECT_EQ(dialog.Types().currentIndex(), shown);
            dialog.Type("Back", dialog.Box("Back").text() + u",2A"_s);
            dialog.Click("btnOK");
        }));
        expected[type].Back = TPrinterCode(std::string(expected[type].Back.Bytes()) + '*');
        EXPECT_EQ(m_codes, expected) << item;
    }
}

TEST_F(CodesDialogTest, changesOfAllTypesAreKeptUntilOk)
{
    EXPECT_TRUE(execute(ptEpson, [](CodesDialog dialog) {
        dialog.Type("Ini", u"41"_s);
        QTest::keyClick(&dialog.Types(), Qt::Key_End); // Tiroir
        EXPECT_EQ(dialog.Box("Tiroir").text(), u"07"_s);
        dialog.Type("Tiroir", u""_s);
        dialog.Click(dialog.Notation(decimal));
        dialog.Types().setFocus();
        QTest::keyClick(&dialog.Types(), Qt::Key_Up); // Personalisée
        dialog.Type("Ini", u"66"_s);
        QTest::keyClick(&dialog.Box("Ini"), Qt::Key_Return);
    }));
    auto expected = DefaultPrinterCodes();
    expected[ptEpson].Ini = TPrinterCode("A");
    expected[ptTiroir].Tiroir = {};
    expected[ptUser1].Ini = TPrinterCode("B");
    EXPECT_EQ(m_codes, expected);
}

// As signs typed on the keyboard, and as the bytes themselves pasted; then through the notations and back.
TEST_F(CodesDialogTest, everyByteGoesThroughEveryNotation)
{
    QSet<QChar> seen;
    const auto wanted = allBytes();
    for (const bool pasted : {false, true}) {
        m_codes[ptUser1] = {};
        EXPECT_TRUE(execute(ptUser1, [&](CodesDialog dialog) {
            dialog.Click(dialog.Notation(character));
            for (const auto &field : PrinterCodeFields()) {
                QString text;
                for (const char c : (wanted.*field.Code).Bytes()) {
                    const auto sign = CharacterOfByte(static_cast<unsigned char>(c));
                    text += pasted ? FromWindows1252({&c, 1}) : QString(sign);
                    seen.insert(sign);
                }
                const std::string name(field.Name);
                dialog.Type(name.c_str(), pasted ? QString() : text);
                QApplication::clipboard()->setText(text);
                if (pasted)
                    QTest::keyClick(&dialog.Box(name.c_str()), Qt::Key_V, Qt::ControlModifier);
            }
            for (const int notation :
                 {decimal, character, hexadecimal, character, decimal, hexadecimal, character})
                dialog.Click(dialog.Notation(notation));
            dialog.Types().setCurrentIndex(0);
            dialog.Types().setCurrentIndex(3);
            dialog.Click("btnOK");
        }));
        for (const auto &field : PrinterCodeFields())
            EXPECT_EQ(m_codes[ptUser1].*field.Code, wanted.*field.Code) << field.Name << pasted;
    }
    EXPECT_EQ(seen.size(), 256) << "two bytes look the same";
    EXPECT_TRUE(told().isEmpty());
}

TEST_F(CodesDialogTest, controlCodesComeFromKeysAndMenu)
{
    EXPECT_TRUE(execute(ptTiroir, [](CodesDialog dialog) {
        auto &box = dialog.Box("Tiroir");
        dialog.Type("Tiroir", {});
        QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_G, u"\a"_s, Qt::ControlModifier);
        EXPECT_EQ(box.text(), u""_s) << "a list holds no characters";
        dialog.Click(dialog.Notation(character));
        QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_G, u"\a"_s, Qt::ControlModifier);
        QTest::keyClick(&box, Qt::Key_End, Qt::NoModifier);

        QContextMenuEvent event(QContextMenuEvent::Keyboard, {1, 1}, box.mapToGlobal(QPoint(1, 1)));
        QApplication::sendEvent(&box, &event);
        auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        for (auto *const action : menu->findChildren<QAction *>())
            for (const auto *start : {"00 NUL", "1B ESC", "AD "})
                if (action->text().startsWith(QLatin1StringView(start)))
                    action->trigger();
        menu->close();
        dialog.Click("btnOK");
    }));
    EXPECT_EQ(m_codes[ptTiroir].Tiroir, TPrinterCode("\a\0\x1b\xad"s));
}

TEST_F(CodesDialogTest, takesOrRefusesWhatPeopleType)
{
    struct TEntry
    {
        int Notation;
        QString Text;
        std::string Code;
        const char *Refused = nullptr; // the item
    };
    const TEntry entries[] = {
        {decimal, u" 27 , 64 ,, "_s, "\x1b@"},
        {decimal, u""_s, ""},
        {hexadecimal, u"1b,,0A"_s, "\x1b\n"},
        {hexadecimal, u"   "_s, ""},
        {character, u" €é "_s, " \x80\xe9 "},
        {character, u"e\u0301"_s, "\xe9"},
        {character, u"27,64"_s, "27,64"},
        {character, u"←←cdefghijklmnopqrstuvwxyz"_s, "\x1b\x1b" + "cdefghijklmnopqrst"s},
        {decimal, u"27,256"_s, {}, "256"},
        {decimal, u"27,x,y"_s, {}, "x"},
        {decimal, u"27, 6 Ω,64"_s, {}, "6Ω"},
        {decimal, u"1,é"_s, {}, "é"},
        {hexadecimal, u"1B4"_s, {}, "1B4"},
        {hexadecimal, u"00,1g"_s, {}, "1G"},
        {hexadecimal, u",,1B"_s, {}, ""},
        {character, u"aΩb≤"_s, {}, "Ω≤"},
    };
    for (const auto &entry : entries) {
        SCOPED_TRACE(entry.Text.toStdString());
        m_codes[ptUser1].Eject = TPrinterCode("kept");
        const bool confirmed = execute(ptUser1, [&](CodesDialog dialog) {
            dialog.Click(dialog.Notation(entry.Notation));
            dialog.Type("Eject", entry.Text);
            QTest::keyClick(&dialog.Box("Eject"), Qt::Key_Return);
            EXPECT_EQ(dialog.Window.isVisible() && dialog.Box("Eject").hasFocus(), entry.Refused != nullptr);
        });
        EXPECT_EQ(confirmed, !entry.Refused);
        EXPECT_EQ(m_codes[ptUser1].Eject.Bytes(), entry.Refused ? "kept" : entry.Code);
        EXPECT_EQ(told(), entry.Refused
                              ? QStringList(u"Code invalide : "_s + QString::fromUtf8(entry.Refused))
                              : QStringList());
    }
}

TEST_F(CodesDialogTest, aCodeIsShownBesideAsAManualWritesIt)
{
    struct TCase
    {
        const char *Typed;
        int Notation;
        const char *Other, *Plain, *Size;
    };
    const TCase cases[] = {
        {"1b,63,30,02", hexadecimal, "27,99,48,2", "ESC c 0 STX", "4 octets"},
        {"13,10,32,36,127,233", decimal, "0D,0A,20,24,7F,E9", "CR LF SP $ DEL $E9", "6 octets"},
        {"←@", character, "1B,40", "ESC @", "2 octets"},
        {"", hexadecimal, "", "", "0 octet"},
        {"7,7,7,7,7,7,7,7,7,7,7,7,7,7,7,7,7,7,7,7,8", decimal,
         "07,07,07,07,07,07,07,07,07,07,07,07,07,07,07,07,07,07,07,07",
         "BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL",
         "21 octets, 20 gardés"},
        {"1b,x", hexadecimal, "", "Code invalide : x", ""},
    };
    execute(ptUser1, [&](CodesDialog dialog) {
        const auto text = [&](const char *name) { return dialog.Find<QLineEdit>(name).text(); };
        for (const auto &row : cases) {
            dialog.Click(dialog.Notation(row.Notation));
            dialog.Type("UnderOff", QString::fromUtf8(row.Typed));
            EXPECT_EQ(text("otherNotation"), QString::fromUtf8(row.Other)) << row.Typed;
            EXPECT_EQ(text("mnemonics"), QString::fromUtf8(row.Plain)) << row.Typed;
            EXPECT_EQ(dialog.Find<QLabel>("codeSize").text(), QString::fromUtf8(row.Size)) << row.Typed;
        }
        EXPECT_FALSE(dialog.Window.findChild<QWidget *>(u"sendCode"_s)) << "nobody to send it";
    });
}

TEST_F(CodesDialogTest, oneCodeIsSentAtOnce)
{
    std::vector<std::string> sent;
    const auto send = [&](std::string_view code) {
        sent.emplace_back(code);
        if (sent.size() == 2)
            throw EInOutError("Port de l'imprimante ticket non trouvé");
    };
    const auto work = [&](CodesDialog dialog) {
        auto &button = dialog.Find("sendCode");
        EXPECT_FALSE(button.isEnabled()) << "no box yet";
        for (const auto &[typed, can] :
             {std::pair(u"1B,0"_s, false), {u""_s, false}, {u"1B,70,00"_s, true}}) {
            dialog.Type("Tiroir", typed);
            EXPECT_EQ(button.isEnabled(), can) << typed.toStdString();
        }
        dialog.Click(button);
        EXPECT_EQ(dialog.Find<QLabel>("codeSize").text(), u"3 octets envoyés"_s);
        QTest::keyClick(&button, Qt::Key_Space);
        EXPECT_EQ(told(), QStringList(u"Port de l'imprimante ticket non trouvé"_s));
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        dialog.Click("ReturnEdit");
        dialog.Click(button);
        EXPECT_TRUE(dialog.Window.isVisible());
    };
    EXPECT_FALSE(execute(ptEpson, work, send));
    EXPECT_EQ(sent, (std::vector{"\x1bp\0"s, "\x1bp\0"s, "\r\n"s}));
    EXPECT_EQ(m_codes, DefaultPrinterCodes());
}
