#include "SentPanel.h"

#include "ByteText.h"
#include "ui_SentPanel.h"

#include <QFontDatabase>
#include <QStyle>
#include <QTabBar>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

QString pathText(TPrintPath path)
{
    switch (path) {
    case TPrintPath::PassThrough:
        return u"le pilote"_s;
    case TPrintPath::Port:
        return u"le port"_s;
    case TPrintPath::Spooler:
        return u"le serveur d'impression"_s;
    case TPrintPath::None:
        break;
    }
    return u"aucun chemin"_s;
}

} // namespace

QString OutcomeText(const TDosPrintOutcome &outcome)
{
    const auto count = (outcome.Accepted < 2 ? u"%1 octet sur %2"_s : u"%1 octets sur %2"_s)
                           .arg(outcome.Accepted)
                           .arg(outcome.Asked);
    const auto way = outcome.Printer.empty()
                         ? pathText(outcome.Path)
                         : pathText(outcome.Path) + u" « %1 »"_s.arg(QString::fromStdString(outcome.Printer));
    QString text;
    if (outcome.Success)
        text = u"Accepté par %1 : %2."_s.arg(way, count);
    else if (outcome.Unknown)
        text = u"Résultat inconnu de %1 : le ticket a peut-être été imprimé, vérifier avant de recommencer."_s
                   .arg(way);
    else
        text = u"Refusé par %1 : %2."_s.arg(way, count);
    if (!outcome.Success && !outcome.Cause.Text.empty())
        text += u'\n' + QString::fromStdString(outcome.Cause.Words());
    if (!outcome.MissingCharacters.isEmpty())
        text += u"\nCaractères sans équivalent, imprimés « ? » : "_s + outcome.MissingCharacters;
    return text;
}

SentPanel::SentPanel(QWidget *parent) : QGroupBox(parent), m_ui(std::make_unique<Ui::SentPanel>())
{
    m_ui->setupUi(this);
    for (auto *text : {m_ui->sentText, m_ui->sentBytes})
        text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_ui->tabs->tabBar()->setAccessibleName(u"Ce qui a été envoyé"_s);
    // The strip lies on the panel itself.
    m_ui->paperArea->viewport()->setAutoFillBackground(false);
    m_ui->paper->setAutoFillBackground(false);
    m_ui->paperArea->setMinimumWidth(m_ui->paper->sizeHint().width() +
                                     style()->pixelMetric(QStyle::PM_ScrollBarExtent));
}

SentPanel::~SentPanel() = default;

void SentPanel::ShowSent(const QString &text, std::string_view bytes)
{
    m_ui->sentText->setPlainText(text);
    m_ui->sentBytes->setPlainText(ByteText(bytes));
}

void SentPanel::ShowPaper(const QList<TReceiptLine> &lines)
{
    m_ui->paper->SetLines(lines);
}

void SentPanel::ShowOutcome(const TDosPrintOutcome &outcome)
{
    const auto icon = outcome.Success   ? QStyle::SP_DialogApplyButton
                      : outcome.Unknown ? QStyle::SP_MessageBoxWarning
                                        : QStyle::SP_MessageBoxCritical;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_ui->outcomeIcon->setPixmap(style()->standardIcon(icon).pixmap(size));
    m_ui->outcome->setText(OutcomeText(outcome));
}

QString SentPanel::SentText() const
{
    return m_ui->sentText->toPlainText();
}

} // namespace Shop
