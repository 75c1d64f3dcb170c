#pragma once

#include <Zelmar01/tasks/TaskPageWidget.h>

#include <vector>

class QLabel;
class QListWidget;
class QPushButton;

namespace Zelmar01 {

class TTriggerEditor;

/// The page "Planification": the triggers of a job, and its next ten runs as they would be with what the page
/// says now.
class TSchedulePage : public TTaskPageWidget
{
    Q_OBJECT
public:
    TSchedulePage();

    void TakeSettings(TTaskSettings &settings) const override;

    /// Whether the job is enabled, which another page decides; a disabled one has no next runs.
    void SetTaskEnabled(bool enabled);

protected:
    void fill(const TTaskSettings &settings) override;

private:
    void addTrigger();
    void deleteTrigger();
    void choose(int row);
    void triggerChanged();
    void showTriggers(int current);
    void showRuns();
    int currentRow() const;

    std::vector<TASK_TRIGGER> m_saved, m_triggers;
    bool m_taskEnabled = true;
    QListWidget *m_list;
    QLabel *m_none;
    QPushButton *m_add, *m_delete;
    TTriggerEditor *m_editor;
    QListWidget *m_runs;
};

} // namespace Zelmar01
