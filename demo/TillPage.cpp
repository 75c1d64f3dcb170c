#include "TillPage.h"

#include "ReceiptWriter.h"
#include "ui_TillPage.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/printing/UsePrnCode.h>

#include <QApplication>
#include <QScopeGuard>
#include <QStandardPaths>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

std::unique_ptr<Ui::TillPage> formOn(QWidget *page)
{
    auto form = std::make_unique<Ui::TillPage>();
    form->setupUi(page);
    return form;
}

} // namespace

TillPage::TillPage(TClock clock, QWidget *parent)
    : QWidget(parent), m_clock(std::move(clock)), m_ui(formOn(this)),
      m_print(*m_ui->ticketPrinter->Component()), m_systemPrinter(m_print.Printer())
{
    UsePrinterCodesDialog();
    setObjectName(u"till"_s);
    setFocusProxy(m_ui->articles);
    listArticles();
    m_ui->printerPanel->UsePrinters(m_systemPrinter);
    for (auto *button : {m_ui->print, m_ui->printAndOpen, m_ui->open})
        button->setMinimumHeight(button->fontMetrics().lineSpacing() * 3);

    const auto onClick = [this](const QPushButton *button, const std::function<void()> &work) {
        connect(button, &QPushButton::clicked, this, [work] { ShowingExceptions(work); });
    };
    onClick(m_ui->print, [this] { printSale(false); });
    onClick(m_ui->printAndOpen, [this] { printSale(true); });
    onClick(m_ui->open, [this] { openDrawer(); });
    connect(m_ui->articles, &QTreeWidget::itemActivated, this, &TillPage::addCurrentArticle);
    connect(m_ui->add, &QPushButton::clicked, this, &TillPage::addCurrentArticle);
    connect(m_ui->printerPanel, &PrinterPanel::CodesWanted, this,
            [this] { ShowingExceptions([this] { editCodes(); }); });
    connect(m_ui->salePanel, &SalePanel::Changed, this, [this] {
        const bool isSold = !m_ui->salePanel->Sale().Lines.isEmpty();
        m_ui->print->setEnabled(isSold);
        m_ui->printAndOpen->setEnabled(isSold);
    });
}

TillPage::~TillPage() = default;

void TillPage::listArticles()
{
    auto &list = *m_ui->articles;
    const int rowHeight = list.fontMetrics().height() * 7 / 4;
    for (const auto &article : Articles()) {
        auto *item = new QTreeWidgetItem(&list, {article.Name, EuroText(article.Price)});
        item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        item->setSizeHint(0, {0, rowHeight});
        item->setToolTip(0, article.Reference);
    }
    list.header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list.header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    list.setCurrentItem(list.topLevelItem(0));
}

void TillPage::Restore(const QSettings &settings)
{
    m_ui->printerPanel->Restore(settings);
    m_codeFile = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + u"/codes.PCC"_s;
    ShowingExceptions([this] { m_print.LoadPrinterCodes(m_codeFile); });
}

void TillPage::Save(QSettings &settings) const
{
    m_ui->printerPanel->Save(settings);
}

QString TillPage::SentText() const
{
    return m_ui->sentPanel->SentText();
}

void TillPage::addCurrentArticle()
{
    if (const auto row = m_ui->articles->currentIndex().row(); row >= 0)
        m_ui->salePanel->Add(Articles()[row]);
}

void TillPage::printSale(bool openDrawer)
{
    const auto choice = m_ui->printerPanel->Choice();
    const auto receipt = WriteReceipt(m_ui->salePanel->Sale(), m_clock(), m_print.Codes,
                                      {choice.Type, choice.Conversion, openDrawer});
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
        m_ui->sentPanel->ShowSent({}, m_received);
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
    m_ui->sentPanel->ShowPaper(ReadReceipt(m_received, CharacterSetFor(m_print.Conversion())));
    m_ui->sentPanel->ShowOutcome(m_print.Outcome());
}

void TillPage::send(const QString &text, const TDosPrint::TTicket &ticket)
{
    usePrinter();
    m_ui->sentPanel->ShowSent(text, ticket.Bytes + ticket.Tail);
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
    const auto choice = m_ui->printerPanel->Choice();
    m_print.SetPrinter(choice.IsVirtual ? m_virtual.Printer() : m_systemPrinter);
    m_print.setPrnName(choice.IsVirtual ? QString::fromLatin1(VirtualPrinter::PortName) : choice.Name);
    m_print.setPrnType(choice.Type);
    m_print.setConversion(choice.Conversion);
    m_print.setEscPassThrough(choice.PassThrough);
}

} // namespace Shop
