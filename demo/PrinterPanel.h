#pragma once

#include <Zelmar01/printing/PrinterCodes.h>
#include <Zelmar01/printing/output/PrinterObject.h>

#include <QGroupBox>

#include <memory>

class QSettings;

namespace Ui {
class PrinterPanel;
}

namespace Shop {

/// Where tickets go and how they are made.
struct TPrinterChoice
{
    bool IsVirtual = true;
    QString Name; ///< a printer, a port or "Par défaut"
    Zelmar01::TPrinterType Type = Zelmar01::ptEpson;
    int Conversion = 1;
    bool PassThrough = false;
};

/// Lets the user choose the printer. The system's printers are looked up when he asks for them.
class PrinterPanel : public QGroupBox
{
    Q_OBJECT
public:
    explicit PrinterPanel(QWidget *parent = nullptr);
    ~PrinterPanel() override;

    /// `printers` is what the system's printers are asked of.
    void UsePrinters(std::shared_ptr<Zelmar01::TPrinterObject> printers) { m_printers = std::move(printers); }

    TPrinterChoice Choice() const;

    void Restore(const QSettings &settings);
    void Save(QSettings &settings) const;

signals:
    /// The user wants to see the codes of the printer.
    void CodesWanted();

private:
    void lookUpPrinters();
    void addPrinters(const QStringList &names);
    void showState();

    const std::unique_ptr<Ui::PrinterPanel> m_ui;
    std::shared_ptr<Zelmar01::TPrinterObject> m_printers;
};

} // namespace Shop
