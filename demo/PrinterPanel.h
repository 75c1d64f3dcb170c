#pragma once

#include <Zelmar01/printing/PrinterCodes.h>
#include <Zelmar01/printing/output/PrinterObject.h>

#include <QGroupBox>

class QCheckBox;
class QComboBox;
class QLabel;
class QSettings;

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
    /// `printers` is what the system's printers are asked of.
    explicit PrinterPanel(std::shared_ptr<Zelmar01::TPrinterObject> printers, QWidget *parent = nullptr);

    TPrinterChoice Choice() const;

    void Restore(const QSettings &settings);
    void Save(QSettings &settings) const;

private:
    void lookUpPrinters();
    void addPrinters(const QStringList &names);
    void showState();

    std::shared_ptr<Zelmar01::TPrinterObject> m_printers;
    QComboBox *m_printer, *m_type, *m_conversion;
    QCheckBox *m_passThrough;
    QLabel *m_state;
};

} // namespace Shop
