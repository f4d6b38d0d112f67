// The dialog in which the user picks one project of the projects folder: a list of the
// folder's projects, a double click or the accept button choosing the selected one.
#include "shell/forms/project_choice_dialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvak::shell::forms {

ProjectChoiceDialog::ProjectChoiceDialog(const QString& caption, const QString& label,
                                         const QStringList& projects, QWidget* parent)
    : QDialog(parent), m_label(new QLabel(label, this)), m_list(new QListWidget(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)) {
    setWindowTitle(caption);
    m_label->setWordWrap(true);
    m_list->addItems(projects);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    if (!projects.isEmpty()) {
        m_list->setCurrentRow(0);
    }
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_label);
    layout->addWidget(m_list);
    layout->addWidget(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    // Nothing to accept while no project is selected.
    auto updateAccept = [this] {
        m_buttons->button(QDialogButtonBox::Ok)->setEnabled(m_list->currentItem() != nullptr);
    };
    connect(m_list, &QListWidget::currentItemChanged, this, updateAccept);
    updateAccept();
    resize(420, 360);
}

void ProjectChoiceDialog::setButtonTexts(const QString& accept, const QString& cancel) {
    m_buttons->button(QDialogButtonBox::Ok)->setText(accept);
    m_buttons->button(QDialogButtonBox::Cancel)->setText(cancel);
}

void ProjectChoiceDialog::select(const QString& project) {
    const auto found = m_list->findItems(project, Qt::MatchExactly);
    if (!found.isEmpty()) {
        m_list->setCurrentItem(found.first());
    }
}

QString ProjectChoiceDialog::chosen() const {
    const QListWidgetItem* item = m_list->currentItem();
    return item ? item->text() : QString();
}

} // namespace orvak::shell::forms
