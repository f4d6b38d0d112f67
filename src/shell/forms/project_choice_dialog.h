// The dialog in which the user picks one project of the projects folder by name, for the
// "open" and "delete" commands of the Project menu.
#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>

class QDialogButtonBox;
class QLabel;
class QListWidget;

namespace orvak::shell::forms {

class ProjectChoiceDialog : public QDialog {
    Q_OBJECT
public:
    ProjectChoiceDialog(const QString& caption, const QString& label, const QStringList& projects,
                        QWidget* parent = nullptr);

    /// Sets the captions of the two buttons (prompts of the form).
    void setButtonTexts(const QString& accept, const QString& cancel);
    /// Selects a project by name when the list holds it.
    void select(const QString& project);
    /// The project selected; empty when none is.
    QString chosen() const;

private:
    QLabel* m_label;
    QListWidget* m_list;
    QDialogButtonBox* m_buttons;
};

} // namespace orvak::shell::forms
