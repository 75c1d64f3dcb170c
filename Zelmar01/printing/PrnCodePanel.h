#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

namespace Zelmar01 {

class TPrnCodeBox;

/// What the code in a box is in another notation and in the words of a printer's manual, with a button that
/// sends it to the printer.
class TPrnCodePanel : public QWidget
{
    Q_OBJECT
public:
    /// Without `canSend` there is no button.
    explicit TPrnCodePanel(bool canSend, QWidget *parent = nullptr);

    /// Shows what stands in a box, also as the box's description for a screen reader.
    void ShowBox(TPrnCodeBox &box);
    /// The code that is shown was sent.
    void ShowSent();

signals:
    void OnSend();

protected:
    void changeEvent(QEvent *event) override;

private:
    QLineEdit *makeValue(const QString &name);
    void takeColours();
    void showCode(const TPrnCodeBox &box, std::string_view code);
    void showError(const QString &text);

    QLabel *m_name, *m_size, *m_otherName, *m_plainName;
    QLineEdit *m_other, *m_plain;
    QPushButton *m_send = nullptr;
    std::size_t m_count = 0;
};

} // namespace Zelmar01
