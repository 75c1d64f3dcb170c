#pragma once

#include <Zelmar01/package/ComponentHolder.h>
#include <Zelmar01/printing/DosPrint.h>

namespace Zelmar01 {

/// A receipt printer on a form.
///
///     ui.ticketPrinter->Component()->PrintString(text, true);
class TDosPrintHolder : public TComponentHolder
{
    Q_OBJECT
    Q_PROPERTY(Zelmar01::TDosPrint::TPrinterType PrnType READ PrnType WRITE setPrnType)
    Q_PROPERTY(QString PrnName READ PrnName WRITE setPrnName)
    Q_PROPERTY(QString PrnFile READ PrnFile WRITE setPrnFile)
    Q_PROPERTY(bool EscPassThrough READ EscPassThrough WRITE setEscPassThrough)
    Q_PROPERTY(int Conversion READ Conversion WRITE setConversion)
public:
    explicit TDosPrintHolder(QWidget *parent = nullptr);

    TDosPrint *Component() const { return m_printer; }

    // The properties of the component.
    TPrinterType PrnType() const { return m_printer->PrnType(); }
    void setPrnType(TPrinterType value) { m_printer->setPrnType(value); }
    QString PrnName() const { return m_printer->PrnName(); }
    void setPrnName(const QString &value);
    QString PrnFile() const { return m_printer->PrnFile(); }
    void setPrnFile(const QString &value);
    bool EscPassThrough() const { return m_printer->EscPassThrough(); }
    void setEscPassThrough(bool value) { m_printer->setEscPassThrough(value); }
    int Conversion() const { return m_printer->Conversion(); }
    void setConversion(int value) { m_printer->setConversion(value); }

public slots:
    // For connections of a form. What they raise goes to the exception display.
    void OuvreTiroirCaisse();
    void EditPrinterCodes();

private:
    TDosPrint *m_printer;
};

} // namespace Zelmar01
