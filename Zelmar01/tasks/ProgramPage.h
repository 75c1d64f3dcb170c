#pragma once

#include <Zelmar01/tasks/TaskPageWidget.h>

class QCheckBox;
class QLineEdit;
class QPlainTextEdit;

namespace Zelmar01 {

/// The page "Tâche": which program is run, and how.
class TProgramPage : public TTaskPageWidget
{
    Q_OBJECT
public:
    TProgramPage();

    void TakeSettings(TTaskSettings &settings) const override;

signals:
    void EnabledChanged(bool enabled);

protected:
    void fill(const TTaskSettings &settings) override;

private:
    QWidget *withButton(QLineEdit *field, const QString &name, void (TProgramPage::*browse)());
    void browseProgram();
    void browseDirectory();
    void put(QLineEdit *field, const QString &path);

    QLineEdit *m_file, *m_account;
    QLineEdit *m_program, *m_parameters, *m_directory;
    QPlainTextEdit *m_comment;
    QCheckBox *m_enabled;
};

} // namespace Zelmar01
