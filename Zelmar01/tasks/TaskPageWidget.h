#pragma once

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/tasks/TaskSettings.h>

#include <QScopedValueRollback>
#include <QWidget>

namespace Zelmar01 {

/// A value that a page of a property sheet does not take, and the field to put it right in.
class ERefusedValue : public Exception
{
public:
    ERefusedValue(const QString &message, QWidget *field) : Exception(message.toStdString()), m_field(field)
    {
    }

    QWidget *Field() const { return m_field; }

private:
    QWidget *m_field;
};

/// A page of a job's property sheet.
class TTaskPageWidget : public QWidget
{
    Q_OBJECT
public:
    /// Fills the fields.
    void ShowSettings(const TTaskSettings &settings)
    {
        const QScopedValueRollback showing(m_showing, true);
        fill(settings);
    }
    /// Takes over what the user changed. Raises ERefusedValue.
    virtual void TakeSettings(TTaskSettings &settings) const = 0;

signals:
    /// The user changed something.
    void Changed();

protected:
    virtual void fill(const TTaskSettings &settings) = 0;
    /// To be called for every change of a field.
    void fieldChanged()
    {
        if (!m_showing)
            emit Changed();
    }

private:
    bool m_showing = false;
};

} // namespace Zelmar01
