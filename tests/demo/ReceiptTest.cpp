#include <demo/ByteText.h>
#include <demo/ReceiptReader.h>
#include <demo/ReceiptWriter.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace Shop;
using namespace Zelmar01;

namespace {

std::string write(const TReceiptForm &form)
{
    const TSale sale{{{{u"X"_s, u"Chaîne d'été"_s, 12'00}, 1}}};
    const auto receipt =
        WriteReceipt(sale, QDateTime(QDate(2024, 1, 2), QTime(9, 5)), DefaultPrinterCodes(), form);
    return receipt.Ticket.Bytes + receipt.Ticket.Tail;
}

// The lines of a ticket, one a text: wide [..], bold *..*, marks {..}, alignment by the first character.
std::string shown(std::string_view bytes, int conversion = 0)
{
    std::string lines;
    for (const auto &line : ReadReceipt(bytes, CharacterSetFor(conversion))) {
        QString text = line.Alignment & Qt::AlignRight     ? u">"_s
                       : line.Alignment & Qt::AlignHCenter ? u"^"_s
                                                           : QString();
        for (const auto &span : line.Spans)
            text += span.Wide ? u'[' + span.Text + u']' : span.Bold ? u'*' + span.Text + u'*' : span.Text;
        switch (line.Mark) {
        case TReceiptMark::None:
            break;
        case TReceiptMark::Cut:
            text = u"{cut}"_s;
            break;
        case TReceiptMark::Drawer:
            text = u"{drawer}"_s;
            break;
        case TReceiptMark::PageEnd:
            text = u"{page}"_s;
            break;
        case TReceiptMark::Unknown:
            text = u"{? "_s + text + u'}';
            break;
        }
        lines += text.toStdString() + "|";
    }
    return lines;
}

TEST(Receipt, IsReadAsTheVirtualPrinterPrintsIt)
{
    using namespace std::string_literals;
    struct TCase
    {
        const char *Name;
        std::string Bytes;
        std::string Shown;
        int Conversion = 0;
    };
    const std::vector<TCase> cases{
        {"empty", "", ""},
        {"lines", "un\r\n\r\ndeux", "un||deux|"},
        {"print modes", "a\x1b! b\x1b!\x08"s + "c\x1b!\0d\x1b"s + "E\1e"s, "a[b]*c*d*e*|"},
        {"alignment by digits and by numbers", "\x1b"s + "a2x\n\x1b"s + "a\1y\n\x1b"s + "@z", ">x|^y|z|"},
        {"events", "a\n\x1bi\a\f", "a|{cut}|{drawer}|{page}|"},
        {"drawer pulse", "\x1bp\0\x20\x20"s, "{drawer}|"},
        {"feed", "a\x1b"s + "d\2b", "a|||b|"},
        {"silent codes", "\x1b"s + "c0\2\x1b"s + "3\x17\x1b"s + "M1\x1b"s + "e\5x", "x|"},
        {"a code of another printer", "\x1b(s3Bx", "{? ESC (}|s3Bx|"},
        {"a code without its parameter", "x\x1b!", "x|{? ESC !}|"},
        {"an escape at the end", "\x1b", "{? ESC}|"},
        {"other control codes", "\x0e\x7f", "{? SO}|{? DEL}|"},
        {"long lines go on", std::string(41, 'x'), std::string(40, 'x') + "|x|"},
        {"wide letters take two columns", "\x1b! "s + std::string(21, 'x'),
         "[" + std::string(20, 'x') + "]|[x]|"},
        {"Windows-1252", "\xe9\x80", "é€|"},
        {"DOS page", "\x82\xe4\x90", "é€É|", 1},
        {"national set", "{@}|\\A", "éàèùçA|", 2},
    };
    for (const auto &row : cases)
        EXPECT_EQ(shown(row.Bytes, row.Conversion), row.Shown) << row.Name;
}

TEST(Receipt, UsesTheCodesOfItsPrinterType)
{
    // What a line is aligned with, where the printer has no code for it.
    EXPECT_EQ(write({ptPlain, 0, false}).substr(0, 30), "           BIJOUTERIE ZELMAR\r\n");
    EXPECT_TRUE(write({ptPlain, 0, false}).ends_with("merci de votre fid\xe9lit\xe9 !\r\n"));
    EXPECT_TRUE(write({ptHPPCL, 0, true}).ends_with("!\r\n\f\a"));
    EXPECT_EQ(write({ptHPPCL, 0, false}).substr(0, 38), "           \x1b(s3BBIJOUTERIE ZELMAR\x1b(s0B");
    const auto french = write({ptIBM, 2, true});
    EXPECT_TRUE(french.starts_with("\x1b@\x1bR\x01\x1b\x1dt\x05\x1b\x1d"
                                   "a1\x0e"));
    EXPECT_NE(french.find("ChaIne d'{t{\r\n"), std::string::npos);
    EXPECT_TRUE(french.ends_with("\x1b"
                                 "d\x02\x07"));
}

TEST(Receipt, IsShownAsBytes)
{
    EXPECT_EQ(ByteText("\x1b@Or \xe9\r\n\a"), u"0000  1B 40 4F 72 20 E9 0D 0A  ESC @Or · CR LF\n"
                                              "0008  07                       BEL"_s);
}

} // namespace
