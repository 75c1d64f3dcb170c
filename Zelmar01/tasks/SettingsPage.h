#pragma once

#include <Zelmar01/tasks/TaskPageWidget.h>

#include <vector>

class QCheckBox;
class QComboBox;
class QSpinBox;

namespace Zelmar01 {

class TMinutesField;

/// The page "Paramètres": how long a job may run, and what it waits for.
class TSettingsPage : public TTaskPageWidget
{
    Q_OBJECT
public:
    TSettingsPage();

    void TakeSettings(TTaskSettings &settings) const override;

protected:
    void fill(const TTaskSettings &settings) override;

private:
    struct TFlagBox
    {
        std::uint32_t Flag;
        QCheckBox *Box;
    };

    QCheckBox *addFlag(std::uint32_t flag, const QString &name, const QString &text, const QString &help);
    QWidget *makeEnd();
    QWidget *makeIdle();
    QWidget *makePower();
    QWidget *makeOthers();
    void userChanged();
    void enableFields();

    std::vector<TFlagBox> m_flags;
    QCheckBox *m_limited;
    TMinutesField *m_limit;
    bool m_limitTouched = false;
    QCheckBox *m_onlyIfIdle = nullptr;
    QSpinBox *m_idle = nullptr, *m_deadline = nullptr;
    QComboBox *m_priority = nullptr;
};

} // namespace Zelmar01
