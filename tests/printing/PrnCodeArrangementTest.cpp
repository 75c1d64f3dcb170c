#include "CodesDialog.h"

#include <QGroupBox>
#include <QLabel>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

/// The texts of a dialog's labels, buttons, groups and lists.
QStringList textsOf(CodesDialog dialog)
{
    QStringList texts{dialog.Window.windowTitle()};
    for (const auto *widget : dialog.Window.findChildren<QWidget *>()) {
        if (const auto *label = qobject_cast<const QLabel *>(widget))
            texts << label->text();
        else if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
            texts << button->text();
        else if (const auto *group = qobject_cast<const QGroupBox *>(widget))
            texts << group->title();
    }
    for (int i = 0; i < dialog.Types().count(); ++i)
        texts << dialog.Types().itemText(i);
    return texts;
}

} // namespace

TEST_F(CodesDialogTest, saysWhatItAlwaysSaid)
{
    execute(ptEpson, [](CodesDialog dialog) {
        const auto texts = u'|' + textsOf(dialog).join(u'|') + u'|';
        for (const auto &part :
             {u"Printer Control Codes"_s, u"Type de l'imprimante "_s,
              u"HP PCL|Epson|IBM|Personalisée|Tiroir"_s,
              u"Les codes de contrôle doivent être entrés comme des listes de valeurs déci ou hexa-"_s,
              u"décimales séparées par des virgules."_s,
              u"Pour les fonctions non supportées, laisser la zone vide."_s, u" Codes de contrôle"_s,
              u"Fonte     A"_s, u"Notation"_s, u"Décimal|Hexa|caractère"_s, u"OK"_s, u"Annuler"_s})
            EXPECT_TRUE(texts.contains(u'|' + part + u'|')) << part.toStdString();
        EXPECT_FALSE(dialog.Types().isEditable());
    });
}

// Each row of the arrangement from left to right; what ends in "Edit" is a box, the rest a label.
TEST_F(CodesDialogTest, standsAsItAlwaysStood)
{
    const char *const rows[] = {"ON OFF",
                                "Bold BoldOnEdit BoldOffEdit Ticket SelTicEdit",
                                "Italic ItalicOnEdit ItalicOffEdit Journal SelJnlEdit",
                                "Underline UnderOnEdit UnderOffEdit Facture SelFacEdit",
                                "CarAEdit B CarBEdit Cutter CutterEdit",
                                "Couleur No cBlackEdit Rg cRedEdit Tiroir TiroirEdit",
                                "Justification Eject EjectEdit",
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
                EXPECT_NEAR(at.center().y(), y ? y : at.center().y(), at.height() / 2) << name.toStdString();
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
    const auto work = [](CodesDialog dialog) {
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
    };
    execute(ptEpson, work, [](std::string_view) {});
    EXPECT_TRUE(told().isEmpty());
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
