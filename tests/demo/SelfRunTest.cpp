#include <support/TempFolder.h>

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// The sale of the run on an Epson printer with the DOS code page: é 82, è 8A, É 90, « AA, » AF, € E4.
QByteArray expectedTicket()
{
    const QByteArray rule = QByteArray(40, '-') + "\r\n";
    const QByteArray bold = "\x1b! ", normal("\x1b!\0", 3);
    const QByteArray left = "\x1b"
                            "a0",
                     centre = "\x1b"
                              "a1",
                     right = "\x1b"
                             "a2";
    return QByteArray("\x1b@\x1b!\0\x1b"
                      "c0\x02\x1b"
                      "3\x17",
                      12) +
           centre + bold + "BIJOUTERIE ZELMAR" + normal + "\r\n" + left + centre +
           "8, rue des Orf\x8avres\r\n" + left + "\r\n" + "Vente du 14/03/2024                10h30\r\n" +
           rule +
           "Article                   HT         TTC\r\n"
           "Bague or 750, trois saphirs\r\n"
           " 1 x  1 250,00      1 041,67    1 250,00\r\n"
           "Boucles d'oreilles \xaa \x90toile \xaf\r\n"
           " 2 x    189,90        316,50      379,80\r\n"
           "Gravure, vingt caract\x8ares\r\n"
           " 1 x     35,00         29,17       35,00\r\n" +
           rule +
           "Total HT                      1 387,34 \xe4\r\n"
           "TVA 20 %                        277,46 \xe4\r\n" +
           right + bold + "TOTAL 1 664,80 \xe4" + normal + "\r\n" + left + "\r\n" + centre +
           "\x90"
           "change sous trente jours,\r\n" +
           left + centre + "merci de votre fid\x82lit\x82 !\r\n" + left +
           "\r\n\r\n\r\n\r\n"
           "\x1bi"
           "\x07";
}

class SelfRun : public testing::Test
{
protected:
    TempFolder m_folder;
    QProcess m_demo;

    QString path(const char *name) const { return QString::fromStdString((m_folder / name).string()); }

    int run(const QStringList &arguments)
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
        environment.insert(u"CUPS_SERVER"_s, u"127.0.0.1:1"_s); // nobody listens there
        m_demo.setProcessEnvironment(environment);
        m_demo.start(QStringLiteral(ZELMAR01_DEMO), arguments);
        EXPECT_TRUE(m_demo.waitForFinished());
        return m_demo.exitStatus() == QProcess::NormalExit ? m_demo.exitCode() : -1;
    }

    QByteArray read(const char *name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        return file.readAll();
    }
};

TEST_F(SelfRun, LeavesTheTicketAndPicturesOfEveryPage)
{
    ASSERT_EQ(run({u"--run"_s, path("new/run")}), 0) << m_demo.readAllStandardError().toStdString();
    EXPECT_EQ(read("new/run/ticket.bin").toHex(' '), expectedTicket().toHex(' '));
    EXPECT_TRUE(QString::fromUtf8(read("new/run/ticket.txt")).contains(u"Boucles d'oreilles « Étoile »\n"_s));

    EXPECT_EQ(QString::fromUtf8(read("new/run/impression.txt")),
              u"Ini : 1B,40,1B,21 = 27,64,27,33\nEnvoyé : ESC p NUL EM $FA\n"_s);
    EXPECT_EQ(QString::fromUtf8(read("new/run/codes.txt")),
              u"Ajouté : 1007 BAGUES - Or jaune - 750 millièmes (18 carats) - Tanzanite (TANZ)\n"
              "Renommé : 1007 BAGUES - Or jaune - 750 millièmes (18 carats) - Tanzanite bleue (TANZ)\n"
              "Supprimé : il reste 538 niveaux.\n"_s);

    const auto lists = QString::fromUtf8(read("new/run/listes.txt"));
    for (const auto *line :
         {u"Changé : Gravure, vingt caractères 36,50\n", u"Tri : PRIX (décroissant), NOM\n"})
        EXPECT_TRUE(lists.contains(QString::fromUtf16(line))) << lists.toStdString();

    EXPECT_EQ(QString::fromUtf8(read("new/run/taches.txt")).count(u"réussie"_s), 1);

    QList<int> grounds;
    for (const auto *name :
         {"new/run/till-light.png", "new/run/till-dark.png", "new/run/codes-light.png",
          "new/run/codes-dark.png", "new/run/printcodes-light.png", "new/run/printcodes-dark.png"}) {
        const QImage picture(path(name));
        ASSERT_FALSE(picture.isNull()) << name;
        QSet<QRgb> colours;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                colours.insert(picture.pixel(x, y));
        EXPECT_GT(colours.size(), 100) << name;
        grounds << picture.pixelColor(2, 2).lightness();
    }
    for (const int light : {0, 2, 4})
        EXPECT_GT(grounds[light], grounds[light + 1] + 100);

    const auto told = QString::fromUtf8(m_demo.readAllStandardOutput());
    for (const auto *text : {"new/run", "ticket.bin", "ticket.txt", "codes.txt", "taches.txt",
                             "till-light.png", "codes-dark.png", "tasks-dark.png", "printcodes-dark.png"})
        EXPECT_TRUE(told.contains(QString::fromUtf8(text))) << text;
}

TEST_F(SelfRun, SaysWhyItCannotBeDone)
{
    QFile file(path("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(run({u"--run"_s, path("file/run")}), 1);
    EXPECT_TRUE(QString::fromUtf8(m_demo.readAllStandardError()).contains(path("file/run")));
    EXPECT_EQ(run({u"--walk"_s}), 2);
}

} // namespace
