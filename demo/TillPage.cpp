#include "TillPage.h"

#include "PrinterPanel.h"
#include "ReceiptWriter.h"
#include "SalePanel.h"
#include "SentPanel.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/printing/UsePrnCode.h>

#include <QApplication>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTreeWidget>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

TillPage::TillPage(TClock clock, QWidget *parent)
    : QWidget(parent), m_clock(std::move(clock)), m_systemPrinter(m_print.Printer()), m_sale(new SalePanel),
      m_printer(new PrinterPanel(m_systemPrinter)), m_sent(new SentPanel)
{
    UsePrinterCodesDialog();
    setObjectName(u"till"_s);
    auto *articles = makeArticles();
    auto *actions = makeActions();
    auto *codes = new QPushButton(u"&Codes d'impression..."_s);
    codes->setObjectName(u"editCodes"_s);
    connect(codes, &QPushButton::clicked, this, [this] { ShowingExceptions([this] { editCodes(); }); });
    // The Tab key goes through the panels in the order in which they become children.
    for (auto *panel : {articles, static_cast<QWidget *>(m_sale), actions, static_cast<QWidget *>(m_printer),
                        static_cast<QWidget *>(codes), static_cast<QWidget *>(m_sent)})
        panel->setParent(this);
    setFocusProxy(m_articles);

    auto *left = new QVBoxLayout;
    left->addWidget(articles, 1);
    left->addWidget(m_printer);
    left->addWidget(codes);
    auto *middle = new QVBoxLayout;
    middle->addWidget(m_sale, 1);
    middle->addWidget(actions);
    auto *layout = new QHBoxLayout(this);
    layout->addLayout(left, 3);
    layout->addLayout(middle, 4);
    layout->addWidget(m_sent, 3);
}

QWidget *TillPage::makeArticles()
{
    auto *group = new QGroupBox(u"Articles"_s);
    m_articles = new QTreeWidget;
    m_articles->setObjectName(u"articles"_s);
    m_articles->setAccessibleName(u"Articles du magasin"_s);
    m_articles->setRootIsDecorated(false);
    m_articles->setAlternatingRowColors(true);
    m_articles->setUniformRowHeights(true);
    const int rowHeight = m_articles->fontMetrics().height() * 7 / 4;
    m_articles->setHeaderLabels({u"Article"_s, u"Prix TTC"_s});
    m_articles->headerItem()->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    for (const auto &article : Articles()) {
        auto *item = new QTreeWidgetItem(m_articles, {article.Name, EuroText(article.Price)});
        item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        item->setSizeHint(0, {0, rowHeight});
        item->setToolTip(0, article.Reference);
    }
    m_articles->header()->setStretchLastSection(false);
    m_articles->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_articles->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_articles->setCurrentItem(m_articles->topLevelItem(0));

    auto *add = new QPushButton(u"&Ajouter à la vente"_s);
    add->setObjectName(u"add"_s);
    auto *layout = new QVBoxLayout(group);
    layout->addWidget(m_articles);
    layout->addWidget(add);
    connect(m_articles, &QTreeWidget::itemActivated, this, &TillPage::addCurrentArticle);
    connect(add, &QPushButton::clicked, this, &TillPage::addCurrentArticle);
    return group;
}

QWidget *TillPage::makeActions()
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    const auto add = [&](const QString &text, const QString &name, Qt::Key key, auto action) {
        auto *button = new QPushButton(text);
        button->setObjectName(name);
        button->setAccessibleName(text);
        button->setText(text + u'\n' + QKeySequence(key).toString(QKeySequence::NativeText));
        button->setShortcut(key);
        button->setMinimumHeight(button->fontMetrics().lineSpacing() * 3);
        layout->addWidget(button, 1);
        connect(button, &QPushButton::clicked, this, [action] { ShowingExceptions([&] { action(); }); });
        return button;
    };
    auto *print = add(u"Imprimer"_s, u"print"_s, Qt::Key_F8, [this] { printSale(false); });
    auto *both = add(u"Imprimer et ouvrir"_s, u"printAndOpen"_s, Qt::Key_F9, [this] { printSale(true); });
    add(u"Ouvrir le tiroir"_s, u"open"_s, Qt::Key_F10, [this] { openDrawer(); });
    const auto follow = [this, print, both] {
        const bool isSold = !m_sale->Sale().Lines.isEmpty();
        print->setEnabled(isSold);
        both->setEnabled(isSold);
    };
    connect(m_sale, &SalePanel::Changed, row, follow);
    follow();
    return row;
}

void TillPage::Restore(const QSettings &settings)
{
    m_printer->Restore(settings);
    m_codeFile = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + u"/codes.PCC"_s;
    ShowingExceptions([this] { m_print.LoadPrinterCodes(m_codeFile); });
}

void TillPage::Save(QSettings &settings) const
{
    m_printer->Save(settings);
}

QString TillPage::SentText() const
{
    return m_sent->SentText();
}

void TillPage::addCurrentArticle()
{
    if (const auto row = m_articles->currentIndex().row(); row >= 0)
        m_sale->Add(Articles()[row]);
}

void TillPage::printSale(bool openDrawer)
{
    const auto choice = m_printer->Choice();
    const auto receipt =
        WriteReceipt(m_sale->Sale(), m_clock(), m_print.Codes, {choice.Type, choice.Conversion, openDrawer});
    send(receipt.Text, receipt.Ticket);
}

void TillPage::openDrawer()
{
    TDosPrint::TTicketOptions options;
    options.OpenDrawer = true;
    send({}, m_print.ComposeTicket({}, options));
}

void TillPage::editCodes()
{
    usePrinter();
    const bool confirmed = m_print.EditPrinterCodes();
    if (m_received = m_virtual.Received(); !m_received.empty()) {
        m_sent->ShowSent({}, m_received);
        showReceived();
    }
    if (confirmed && !m_codeFile.isEmpty())
        saveCodes();
}

void TillPage::saveCodes()
{
    QStringList lost;
    for (const auto &code : m_print.SavePrinterCodes(m_codeFile))
        lost << QString::fromLatin1(code.Name.data(), static_cast<qsizetype>(code.Name.size()));
    if (!lost.isEmpty())
        MessageDlg(u"Trop longs pour le fichier des codes, ils seront perdus au prochain démarrage : "_s +
                       lost.join(u", "_s),
                   mtWarning, mbOK);
}

void TillPage::showReceived()
{
    m_sent->ShowPaper(ReadReceipt(m_received, CharacterSetFor(m_print.Conversion())));
    m_sent->ShowOutcome(m_print.Outcome());
}

void TillPage::send(const QString &text, const TDosPrint::TTicket &ticket)
{
    usePrinter();
    m_sent->ShowSent(text, ticket.Bytes + ticket.Tail);
    {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        const auto finish = qScopeGuard([this] {
            QApplication::restoreOverrideCursor();
            m_received = m_virtual.Received();
            showReceived();
        });
        m_print.PrintTicket(ticket);
    }
    // A port raises; the other ways only tell.
    const auto &outcome = m_print.Outcome();
    if (!outcome.Success)
        MessageDlg(OutcomeText(outcome), outcome.Unknown ? mtWarning : mtError, mbOK);
}

void TillPage::usePrinter()
{
    const auto choice = m_printer->Choice();
    m_print.SetPrinter(choice.IsVirtual ? m_virtual.Printer() : m_systemPrinter);
    m_print.setPrnName(choice.IsVirtual ? QString::fromLatin1(VirtualPrinter::PortName) : choice.Name);
    m_print.setPrnType(choice.Type);
    m_print.setConversion(choice.Conversion);
    m_print.setEscPassThrough(choice.PassThrough);
}

} // namespace Shop
