#pragma once

#include "VirtualPrinter.h"

#include <Zelmar01/printing/DosPrint.h>

#include <QDateTime>
#include <QWidget>

#include <functional>
#include <memory>

class QSettings;

namespace Ui {
class TillPage;
}

namespace Shop {

/// The till: articles are rung up, the ticket is printed and the drawer opens.
class TillPage : public QWidget
{
    Q_OBJECT
public:
    using TClock = std::function<QDateTime()>;

    /// Tickets carry the time that `clock` tells. Raises EInOutError when the virtual printer cannot be made.
    explicit TillPage(TClock clock, QWidget *parent = nullptr);
    ~TillPage() override;

    /// Takes the printer and the codes that were used last; from now on changed codes are kept in a file.
    void Restore(const QSettings &settings);
    void Save(QSettings &settings) const;

    /// What the virtual printer received last, and the text of what was sent last.
    const std::string &ReceivedBytes() const { return m_received; }
    QString SentText() const;

private:
    void listArticles();
    void addCurrentArticle();
    void printSale(bool openDrawer);
    void openDrawer();
    void editCodes();
    void saveCodes();
    void showReceived();
    void send(const QString &text, const Zelmar01::TDosPrint::TTicket &ticket);
    void usePrinter();

    TClock m_clock;
    VirtualPrinter m_virtual;
    const std::unique_ptr<Ui::TillPage> m_ui;
    Zelmar01::TDosPrint &m_print;
    std::shared_ptr<Zelmar01::TPrinterObject> m_systemPrinter;
    std::string m_received;
    QString m_codeFile; ///< where changed codes are kept; empty for a till that forgets them
};

} // namespace Shop
