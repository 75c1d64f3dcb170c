#pragma once

#include <QTimeEdit>

namespace Zelmar01 {

/// An editor of a time of day. The arrow keys run from the last hour or minute on to the first.
class tzmTimeEdit : public QTimeEdit
{
    Q_OBJECT
    Q_PROPERTY(bool Circular READ wrapping WRITE setCircular RESET resetCircular)
    Q_PROPERTY(bool wrapping READ wrapping WRITE setWrapping DESIGNABLE false STORED false)
    Q_PROPERTY(Zelmar01::tzmTimeEdit::TTimeFormat TimeFormat READ TimeFormat WRITE setTimeFormat RESET
                   resetTimeFormat)
    Q_PROPERTY(QString displayFormat READ displayFormat WRITE setDisplayFormat DESIGNABLE false STORED false)
public:
    /// How much of the time is shown, on 24 hours.
    enum TTimeFormat { tfHourMinSec, tfHourMin, tfHour };
    Q_ENUM(TTimeFormat)

    explicit tzmTimeEdit(QWidget *parent = nullptr);

    void setCircular(bool circular) { setWrapping(circular); }
    TTimeFormat TimeFormat() const { return m_format; }
    void setTimeFormat(TTimeFormat format);

protected:
    void wheelEvent(QWheelEvent *event) override;

private:
    void resetCircular() { setCircular(true); }
    void resetTimeFormat() { setTimeFormat(tfHourMin); }

    TTimeFormat m_format = tfHourMin;
};

} // namespace Zelmar01
