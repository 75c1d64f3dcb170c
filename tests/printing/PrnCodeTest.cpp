#include "CodesDialog.h"

#include <Zelmar01/core/WidgetBoxes.h>
#include <Zelmar01/core/Windows1252Text.h>
#include <Zelmar01/printing/PrnCodeBox.h>

#include <QClipboard>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSet>
#include <QWheelEvent>

using namespace Zelmar01;
using namespace Qt::StringLiterals;
using namespace std::string_literals;

namespace {

enum : int { decimal, hexadecimal, character };

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

TEST_F(CodesDialogTest, saysWhatItAlwaysSaid)
{
    execute(ptEpson, [](CodesDialog dialog) {
        EXPECT_EQ(dialog.Window.windowTitle(), u"Printer Control Codes"_s);
        EXPECT_TRUE(dialog.Window.isModal());
        QStringList types, notations, labels;
        for (int i = 0; i < dialog.Types().count(); ++i)
            types << dialog.Types().itemText(i);
        EXPECT_EQ(types.join(u'|'), u"HP PCL|Epson|IBM|Personalisée|Tiroir"_s);
        EXPECT_FALSE(dialog.Types().isEditable());
        for (int i = decimal; i <= character; ++i)
            notations << dialog.Notation(i).text();
        EXPECT_EQ(notations.join(u'|'), u"Décimal|Hexa|caractère"_s);
        EXPECT_EQ(dialog.NotationInForce(), hexadecimal);
        EXPECT_EQ(dialog.Find<QGroupBox>("RgNotation").title(), u"Notation"_s);
        EXPECT_EQ(dialog.Find<QGroupBox>("GroupBox1").title(), u" Codes de contrôle"_s);
        EXPECT_EQ(dialog.Find<QPushButton>("btnOK").text(), u"OK"_s);
        EXPECT_EQ(dialog.Find<QPushButton>("btnCancel").text(), u"Annuler"_s);
        for (const auto *label : dialog.Window.findChildren<QLabel *>())
            labels << label->text();
        for (const auto &text :
             {u"Type de l'imprimante "_s,
              u"Les codes de contrôle doivent être entrés comme des listes de valeurs déci ou hexa-"_s,
              u"décimales séparées par des virgules."_s,
              u"Pour les fonctions non supportées, laisser la zone vide."_s, u"ON"_s, u"OFF"_s,
              u"Fonte     A"_s, u"Justification"_s})
            EXPECT_EQ(labels.count(text), 1) << text.toStdString();
    });
}

// Each row of the arrangement from left to right; what ends in "Edit" is a box, the rest a label.
TEST_F(CodesDialogTest, standsAsItAlwaysStood)
{
    const char *const rows[] = {"Bold BoldOnEdit BoldOffEdit Ticket SelTicEdit",
                                "Italic ItalicOnEdit ItalicOffEdit Journal SelJnlEdit",
                                "Underline UnderOnEdit UnderOffEdit Facture SelFacEdit",
                                "CarAEdit B CarBEdit Cutter CutterEdit",
                                "Couleur No cBlackEdit Rg cRedEdit Tiroir TiroirEdit",
                                "Eject EjectEdit",
                                "Gauche LeftEdit Return ReturnEdit",
                                "Centrée CentrEdit Back BackEdit",
                                "Droite RightEdit Reset ResetEdit",
                                "Ini IniEdit"};
    execute(ptEpson, [&](CodesDialog dialog) {
        auto &group = dialog.Find("GroupBox1");
        const auto place = [&](const QString &name) {
            const QWidget *widget = group.findChild<QWidget *>(name);
            for (const auto *label : group.findChildren<QLabel *>())
                if (label->text() == name)
                    widget = label;
            EXPECT_TRUE(widget && widget->isVisible()) << name.toStdString();
            return widget ? QRect(widget->mapTo(&group, QPoint()), widget->size()) : QRect();
        };
        int above = 0;
        for (const auto *row : rows) {
            int x = 0, y = 0;
            for (const auto &name : QString::fromUtf8(row).split(u' ')) {
                const auto at = place(name);
                EXPECT_GT(at.left(), x) << name.toStdString();
                EXPECT_GT(at.center().y(), above) << name.toStdString();
                EXPECT_NEAR(at.center().y(), y ? y : at.center().y(), 2) << name.toStdString();
                x = at.left();
                y = at.center().y();
            }
            above = y;
        }
        EXPECT_EQ(place(u"BoldOffEdit"_s).right(), place(u"cRedEdit"_s).right());
        EXPECT_LT(place(u"BoldOnEdit"_s).left(), place(u"CarAEdit"_s).left());
        EXPECT_EQ(place(u"SelTicEdit"_s).left(), place(u"IniEdit"_s).left());
    });
}

TEST_F(CodesDialogTest, theTabKeyGoesThroughTheColumns)
{
    execute(
        ptEpson,
        [&](CodesDialog dialog) {
            dialog.Type("BoldOn", u"1B"_s); // something to send
            dialog.Types().setFocus();
            QStringList order;
            do {
                auto *const now = QApplication::focusWidget();
                order << (qobject_cast<QRadioButton *>(now) ? u"notation"_s : now->objectName());
                QTest::keyClick(now, Qt::Key_Tab);
            } while (QApplication::focusWidget() != &dialog.Types() && order.size() < 40);
            EXPECT_EQ(order.join(u' ').remove(u"Edit"_s).toStdString(),
                      "PrinterCombo BoldOn BoldOff ItalicOn ItalicOff UnderOn UnderOff CarA CarB cBlack "
                      "cRed Left Centr Right SelTic SelJnl SelFac Cutter Tiroir Eject Return Back Reset Ini "
                      "sendCode notation btnOK btnCancel");
        },
        [](std::string_view) {});
    EXPECT_TRUE(told().isEmpty());
}

TEST_F(CodesDialogTest, showsACodeInThreeNotations)
{
    const auto before = m_codes;
    EXPECT_TRUE(execute(ptEpson, [](CodesDialog dialog) {
        EXPECT_EQ(dialog.Box("Ini").text(), u"1B,40,1B,21"_s);
        dialog.Click(dialog.Notation(decimal));
        EXPECT_EQ(dialog.Box("Ini").text(), u"27,64,27,33"_s);
        dialog.Click(dialog.Notation(character));
        EXPECT_EQ(dialog.Box("Ini").text(), u"←@←!"_s);
        EXPECT_EQ(dialog.Box("cRed").text(), u" "_s);
        EXPECT_EQ(dialog.Box("ItalicOn").text(), u""_s);
        dialog.Click("btnOK");
    }));
    EXPECT_EQ(m_codes, before);
}

TEST_F(CodesDialogTest, opensOnEachType)
{
    m_codes[ptPlain].Back = TPrinterCode("\5"); // which has no item
    const std::pair<TPrinterType, int> items[] = {{ptHPPCL, 0},  {ptEpson, 1}, {ptIBM, 2},
                                                  {ptPlain, -1}, {ptUser1, 3}, {ptTiroir, 4}};
    for (const auto &[type, item] : items) {
        EXPECT_TRUE(execute(type, [&, shown = item](CodesDialog dialog) {
            EXPECT_EQ(dialog.Types().currentIndex(), shown);
            dialog.Type("Back", dialog.Box("Back").text() + u",2A"_s);
            dialog.Click("btnOK");
        }));
        EXPECT_TRUE(m_codes[type].Back.Bytes().ends_with('*')) << item;
    }
    EXPECT_EQ(m_codes[ptPlain].Back, TPrinterCode("\5*"));
}

TEST_F(CodesDialogTest, everyByteGoesThroughEveryNotation)
{
    m_codes[ptUser1] = allBytes();
    const auto before = m_codes;
    EXPECT_TRUE(execute(ptUser1, [](CodesDialog dialog) {
        for (const int notation :
             {decimal, character, hexadecimal, character, decimal, hexadecimal, character})
            dialog.Click(dialog.Notation(notation));
        dialog.Types().setCurrentIndex(0);
        dialog.Types().setCurrentIndex(3);
        dialog.Click("btnOK");
    }));
    for (const auto &field : PrinterCodeFields())
        EXPECT_EQ(m_codes[ptUser1].*field.Code, before[ptUser1].*field.Code) << field.Name;
}

// As signs typed on the keyboard, and as the bytes themselves pasted.
TEST_F(CodesDialogTest, everyByteCanBeTypedAndPastedAsACharacter)
{
    QSet<QChar> seen;
    const auto wanted = allBytes();
    for (const bool pasted : {false, true}) {
        m_codes[ptTiroir] = {};
        EXPECT_TRUE(execute(ptTiroir, [&](CodesDialog dialog) {
            dialog.Click(dialog.Notation(character));
            for (const auto &field : PrinterCodeFields()) {
                QString text;
                for (const char c : (wanted.*field.Code).Bytes()) {
                    const auto byte = static_cast<unsigned char>(c);
                    text += pasted ? FromWindows1252({&c, 1}) : QString(CharacterOfByte(byte));
                    seen.insert(CharacterOfByte(byte));
                }
                const std::string name(field.Name);
                dialog.Type(name.c_str(), pasted ? QString() : text);
                QApplication::clipboard()->setText(text);
                if (pasted)
                    QTest::keyClick(&dialog.Box(name.c_str()), Qt::Key_V, Qt::ControlModifier);
            }
            dialog.Click("btnOK");
        }));
        for (const auto &field : PrinterCodeFields())
            EXPECT_EQ(m_codes[ptTiroir].*field.Code, wanted.*field.Code) << field.Name << pasted;
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

namespace {

struct TEntry
{
    int Notation;
    QString Text;
    std::string Code;
    const char *Refused = nullptr; // the item
};

} // namespace

TEST_F(CodesDialogTest, takesOrRefusesWhatPeopleType)
{
    QStringList tooMany;
    for (int i = 0; i < 25; ++i)
        tooMany << QString::number(i + 10);
    const TEntry entries[] = {
        {decimal, u" 27 , 64 ,, "_s, "\x1b@"},
        {decimal, u""_s, ""},
        {decimal, tooMany.join(u','),
         "\x0a\x0b\x0c\x0d\x0e\x0f\x10\x11\x12\x13\x14\x15\x16\x17\x18\x19"
         "\x1a\x1b\x1c\x1d"},
        {hexadecimal, u"1b,,0A"_s, "\x1b\n"},
        {hexadecimal, u"   "_s, ""},
        {character, u" €é "_s, " \x80\xe9 "},
        {character, u"e\u0301"_s, "\xe9"},
        {character, u"27,64"_s, "27,64"},
        {character, u"ab\u2190\u2190cdefghijklmnopqrstuv"_s,
         "ab\x1b\x1b"
         "cdefghijklmnopqr"},
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

// Whatever takes the user out of a malformed box, he is told once and comes back to it.
TEST_F(CodesDialogTest, aMalformedBoxKeepsTheUser)
{
    struct TWay
    {
        const char *Name;
        std::function<void(CodesDialog)> Go;
    };
    const TWay ways[] = {
        {"Tab", [](CodesDialog dialog) { QTest::keyClick(&dialog.Box("Reset"), Qt::Key_Tab); }},
        {"another box", [](CodesDialog dialog) { dialog.Click("BoldOnEdit"); }},
        {"OK", [](CodesDialog dialog) { dialog.Click("btnOK"); }},
        {"slow OK",
         [](CodesDialog dialog) {
             QTest::mousePress(&dialog.Find("btnOK"), Qt::LeftButton);
             dialog.Settle();
             QTest::mouseRelease(&dialog.Find("btnOK"), Qt::LeftButton);
         }},
        {"Enter", [](CodesDialog dialog) { QTest::keyClick(&dialog.Box("Reset"), Qt::Key_Return); }},
        {"a notation", [](CodesDialog dialog) { dialog.Click(dialog.Notation(decimal)); }},
        {"a notation by program", [](CodesDialog dialog) { dialog.Notation(character).setChecked(true); }},
        {"the list by mouse",
         [](CodesDialog dialog) {
             QTest::mousePress(&dialog.Types(), Qt::LeftButton);
             dialog.Settle();
             EXPECT_FALSE(dialog.Types().view()->isVisible());
             dialog.Activate();
         }},
        {"the list by wheel",
         [](CodesDialog dialog) {
             QWheelEvent event({5, 5}, dialog.Types().mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                               Qt::NoModifier, Qt::NoScrollPhase, false);
             QApplication::sendEvent(&dialog.Types(), &event);
         }},
        {"the other notation beside", [](CodesDialog dialog) { dialog.Click("mnemonics"); }},
    };
    const auto before = m_codes;
    for (const auto &way : ways) {
        SCOPED_TRACE(way.Name);
        EXPECT_FALSE(execute(ptIBM, [&](CodesDialog dialog) {
            dialog.Type("Back", u"1B"_s); // goes with the type that was shown
            dialog.Type("Reset", u"1B,4"_s);
            way.Go(dialog);
            EXPECT_EQ(told(), QStringList(u"Code invalide : 4"_s));
            EXPECT_TRUE(dialog.Window.isVisible());
            EXPECT_TRUE(dialog.Box("Reset").hasFocus());
            EXPECT_EQ(dialog.Box("Reset").text(), u"1B,4"_s);
            EXPECT_EQ(dialog.Types().currentText(), u"IBM"_s);
            EXPECT_EQ(dialog.NotationInForce(), hexadecimal);

            dialog.Type("Reset", u"1B,40"_s); // and everything works again
            dialog.Click(dialog.Notation(decimal));
            EXPECT_EQ(dialog.Box("Reset").text(), u"27,64"_s);
            EXPECT_EQ(dialog.Box("Back").text(), u"27"_s);
            dialog.Types().setCurrentIndex(1);
            EXPECT_EQ(dialog.Box("Back").text(), u"27,101,5"_s);
        }));
        EXPECT_TRUE(told().isEmpty());
        EXPECT_EQ(m_codes, before);
    }
}

TEST_F(CodesDialogTest, cancellingAlwaysWorks)
{
    const std::pair<const char *, std::function<void(CodesDialog)>> ways[] = {
        {"the button", [](CodesDialog dialog) { dialog.Click("btnCancel"); }},
        {"a slow click",
         [](CodesDialog dialog) {
             QTest::mousePress(&dialog.Find("btnCancel"), Qt::LeftButton);
             dialog.Settle();
             QTest::mouseRelease(&dialog.Find("btnCancel"), Qt::LeftButton);
         }},
        {"the Tab key",
         [](CodesDialog dialog) {
             QTest::keyClick(&dialog.Types(), Qt::Key_Backtab, Qt::ShiftModifier);
             dialog.Find("btnCancel").setFocus();
             dialog.Settle();
             QTest::keyClick(&dialog.Find("btnCancel"), Qt::Key_Space);
         }},
        {"Escape", [](CodesDialog dialog) { QTest::keyClick(&dialog.Box("Ini"), Qt::Key_Escape); }},
        {"the window", [](CodesDialog dialog) { dialog.Window.close(); }},
    };
    const auto before = m_codes;
    for (const auto &[name, cancel] : ways) {
        EXPECT_FALSE(execute(ptEpson, [&, cancelIt = cancel](CodesDialog dialog) {
            dialog.Type("Ini", u"41"_s);
            dialog.Click(dialog.Notation(decimal));
            dialog.Types().setCurrentIndex(4);
            dialog.Type("Ini", u"300"_s);
            cancelIt(dialog);
            EXPECT_FALSE(dialog.Window.isVisible());
        })) << name;
        EXPECT_EQ(told(), QStringList()) << name;
        EXPECT_EQ(m_codes, before) << name;
    }
}

TEST_F(CodesDialogTest, aBoxLeftForAnnulerIsCheckedByOk)
{
    EXPECT_FALSE(execute(ptEpson, [&](CodesDialog dialog) {
        dialog.Type("Ini", u"xx"_s);
        dialog.Find("btnCancel").setFocus();
        EXPECT_EQ(told(), QStringList());
        dialog.Click("btnOK");
        EXPECT_EQ(told(), QStringList(u"Code invalide : XX"_s));
        EXPECT_TRUE(dialog.Box("Ini").hasFocus());
    }));
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

// With the real message box, whose own event loop runs inside of the leaving.
TEST_F(CodesDialogTest, theMessageBoxComesOnce)
{
    SetExceptionDisplay({});
    UseMessageBoxes();
    EXPECT_FALSE(execute(ptEpson, [](CodesDialog dialog) {
        int boxes = 0;
        QTimer answer;
        QObject::connect(&answer, &QTimer::timeout, [&] {
            if (auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                EXPECT_EQ(box->text(), u"Code invalide : 300"_s);
                ++boxes;
                QTest::keyClick(box, Qt::Key_Return);
            }
        });
        answer.start(5);
        dialog.Click(dialog.Notation(decimal));
        dialog.Type("Ini", u"300"_s);
        int expected = 0;
        for (auto *const target :
             {&dialog.Find("btnOK"), &dialog.Find("BackEdit"), static_cast<QWidget *>(&dialog.Types()),
              static_cast<QWidget *>(&dialog.Notation(hexadecimal))}) {
            QTest::mousePress(target, Qt::LeftButton);
            QTest::qWait(60);
            QTest::mouseRelease(target, Qt::LeftButton);
            dialog.Activate();
            EXPECT_EQ(boxes, ++expected) << target->objectName().toStdString();
            EXPECT_TRUE(dialog.Box("Ini").hasFocus());
        }
        EXPECT_EQ(dialog.NotationInForce(), decimal);
    }));
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
        {"\u2190@", character, "1B,40", "ESC @", "2 octets"},
        {"", hexadecimal, "", "", "0 octet"},
        {"7,7,7,7,7,7,7,7,7,7,7,7,7,7,7,7,7,7,7,7,8", decimal,
         "07,07,07,07,07,07,07,07,07,07,07,07,07,07,07,07,07,07,07,07",
         "BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL BEL",
         "21 octets, 20 gardés"},
        {"1b,", hexadecimal, "27", "ESC", "1 octet"},
        {"1b,x", hexadecimal, "", "Code invalide : x", ""},
    };
    for (const auto &row : cases)
        execute(ptUser1, [&](CodesDialog dialog) {
            dialog.Click(dialog.Notation(row.Notation));
            dialog.Type("UnderOff", QString::fromUtf8(row.Typed));
            const auto text = [&](const char *name) { return dialog.Find<QLineEdit>(name).text(); };
            EXPECT_EQ(text("otherNotation"), QString::fromUtf8(row.Other)) << row.Typed;
            EXPECT_EQ(text("mnemonics"), QString::fromUtf8(row.Plain)) << row.Typed;
            EXPECT_EQ(dialog.Find<QLabel>("codeSize").text(), QString::fromUtf8(row.Size)) << row.Typed;
            EXPECT_TRUE(dialog.Window.findChild<QWidget *>(u"sendCode"_s) == nullptr);
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
    EXPECT_FALSE(execute(
        ptEpson,
        [&](CodesDialog dialog) {
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
        },
        send));
    EXPECT_EQ(sent, (std::vector{"\x1bp\0"s, "\x1bp\0"s, "\r\n"s}));
    EXPECT_EQ(m_codes, DefaultPrinterCodes());
}

TEST_F(CodesDialogTest, goesWithTheWindowItStandsOn)
{
    auto *const window = new QWidget;
    window->show();
    TPrinterCodes before = m_codes;
    EXPECT_FALSE(use(
        [&](CodesDialog dialog) {
            dialog.Type("Ini", u"41"_s);
            delete window;
        },
        [&] { return (new TfmPrnCode(window))->Execute(m_codes, ptEpson); }));
    EXPECT_EQ(m_codes, before);
}

TEST_F(CodesDialogTest, fitsTheScreenWithAVeryLargeFont)
{
    const auto font = QApplication::font();
    auto large = font;
    large.setPointSizeF(font.pointSizeF() * 2);
    QApplication::setFont(large);
    execute(ptEpson, [](CodesDialog dialog) {
        EXPECT_LE(dialog.Window.height(), dialog.Window.screen()->availableSize().height());
        EXPECT_LE(dialog.Window.width(), dialog.Window.screen()->availableSize().width());
        for (const auto *name : {"BoldOnEdit", "SelTicEdit", "IniEdit", "PrinterCombo"}) {
            auto &widget = dialog.Find(name);
            widget.setFocus();
            EXPECT_EQ(widget.visibleRegion().boundingRect(), widget.rect()) << name;
        }
    });
    QApplication::setFont(font);
}
