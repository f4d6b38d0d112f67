// BmRipRpt: the listings, the report document and the notes of the project's beams.
#include "beams/forms/bmriprpt_form.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "beams/beam_job.h"
#include "beams/forms/beam_choice.h"
#include "core/error.h"
#include "core/file_util.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"
#include "ui/text_viewer.h"

namespace fs = std::filesystem;

namespace orvak::beams::forms {

namespace {

constexpr std::string_view kPromptKey = "BMRIPRPT";
constexpr std::size_t kCaption = 1;
constexpr std::size_t kFloorLabel = 2;
constexpr std::size_t kBeamLabel = 3;
constexpr std::size_t kListingLabel = 4;
constexpr std::size_t kFirstListing = 5; // shear, analysis, flexure, deflection
constexpr std::size_t kAnalyButton = 9;
constexpr std::size_t kReportButton = 10;
constexpr std::size_t kNotesButton = 11;
constexpr std::size_t kExitButton = 12;
constexpr std::size_t kNoReport = 13;
constexpr std::size_t kNoBeam = 14;
constexpr std::size_t kNoListing = 15;
constexpr std::size_t kNotesTitle = 16;
constexpr std::size_t kPromptCount = 16;

constexpr std::string_view kNotesFile = "Report.txt";

constexpr std::array<std::string_view, 4> kListingExt = {kShearListingExt, kAnalysisListingExt,
                                                         kFlexureListingExt, kDeflectionListingExt};
constexpr std::array<std::string_view, 4> kListingNames = {"Shear", "Analysis", "Flexure",
                                                           "Long-term deflection"};

} // namespace

BmRipRpt::BmRipRpt(shell::ShellState& shell, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_choice(new BeamChoice(shell, this, &m_messageHook)),
      m_listing(new QComboBox(this)), m_analy(new QPushButton(this)),
      m_report(new QPushButton(this)), m_notes(new QPushButton(this)),
      m_exit(new QPushButton(this)) {
    setObjectName(QStringLiteral("BmRipRpt"));
    m_listing->setObjectName(QStringLiteral("AnalyCombo"));
    m_analy->setObjectName(QStringLiteral("CmdAnaly"));
    m_report->setObjectName(QStringLiteral("CmdViewRtfFile"));
    m_notes->setObjectName(QStringLiteral("CmdNotes"));
    m_exit->setObjectName(QStringLiteral("exit"));
    for (std::size_t k = 0; k < kListingExt.size(); ++k) {
        m_listing->addItem(QString());
    }
    m_listing->setCurrentIndex(2); // the flexure listing is read most

    auto* fields = new QFormLayout;
    for (QLabel*& label : m_labels) {
        label = new QLabel(this);
    }
    fields->addRow(m_labels[0], m_choice->floors());
    fields->addRow(m_labels[1], m_choice->beams());
    fields->addRow(m_labels[2], m_listing);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_analy);
    buttons->addWidget(m_report);
    buttons->addWidget(m_notes);
    buttons->addStretch(1);
    buttons->addWidget(m_exit);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addStretch(1);
    layout->addLayout(buttons);

    connect(m_analy, &QPushButton::clicked, this, [this] { showListing(); });
    connect(m_report, &QPushButton::clicked, this, [this] { showReport(); });
    connect(m_notes, &QPushButton::clicked, this, [this] { editNotes(); });
    connect(m_exit, &QPushButton::clicked, this, [this] { ui::closeForm(this); });

    readPrompts();
    m_choice->load();
}

bool BmRipRpt::chooseBeam(int floor, int number) {
    return m_choice->chooseBeam(floor, number);
}

QComboBox* BmRipRpt::floorCombo() const {
    return m_choice->floors();
}

QComboBox* BmRipRpt::beamCombo() const {
    return m_choice->beams();
}

QString BmRipRpt::prompt(std::size_t n, std::string_view english) const {
    return ui::formPrompt(m_prompts, n, english, m_shell.language());
}

void BmRipRpt::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    setWindowTitle(prompt(kCaption, "Beam reports"));
    m_labels[0]->setText(prompt(kFloorLabel, "Floor"));
    m_labels[1]->setText(prompt(kBeamLabel, "Beam"));
    m_labels[2]->setText(prompt(kListingLabel, "Listing"));
    for (std::size_t k = 0; k < kListingNames.size(); ++k) {
        m_listing->setItemText(static_cast<int>(k), prompt(kFirstListing + k, kListingNames[k]));
    }
    m_analy->setText(prompt(kAnalyButton, "Listing"));
    m_report->setText(prompt(kReportButton, "Report"));
    m_notes->setText(prompt(kNotesButton, "Notes"));
    m_exit->setText(prompt(kExitButton, "Exit"));
}

fs::path BmRipRpt::beamFile(std::string_view extension) const {
    const BeamRecord* beam = m_choice->beam();
    if (beam == nullptr) {
        return {};
    }
    return m_shell.projectPath() / (listingBaseName(*beam) + std::string(extension));
}

QWidget* BmRipRpt::showFile(const fs::path& file, const QString& missing) {
    if (file.empty()) {
        ui::tellUser(this, m_messageHook, prompt(kNoBeam, "Choose a floor and a beam first."));
        return nullptr;
    }
    ui::EditAsc* viewer = ui::openSheetViewer(this, m_shell, file, m_messageHook);
    if (viewer == nullptr) {
        ui::tellUser(this, m_messageHook, missing);
    }
    return viewer;
}

QWidget* BmRipRpt::showListing() {
    const auto k = static_cast<std::size_t>(std::max(0, m_listing->currentIndex()));
    return showFile(beamFile(kListingExt[k]),
                    prompt(kNoListing, "The beam has no such listing yet: design it first."));
}

QWidget* BmRipRpt::showReport() {
    return showFile(beamFile(".rtf"), prompt(kNoReport, "Sorry, no file is prepared yet !"));
}

QPlainTextEdit* BmRipRpt::editNotes() {
    if (m_notesEditor != nullptr) {
        m_notesEditor->window()->raise();
        return m_notesEditor;
    }
    auto* dialog = new QDialog(this);
    dialog->setObjectName(QStringLiteral("NotesDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(prompt(kNotesTitle, "Notes of the project") + QStringLiteral(" - ") +
                           QString::fromStdString(m_shell.projectName));
    m_notesEditor = new QPlainTextEdit(dialog);
    m_notesEditor->setObjectName(QStringLiteral("NotesText"));
    m_notesEditor->setFont(ui::listingFont());
    const auto bytes = core::readWholeFile(core::resolveNoCase(m_shell.projectPath(), kNotesFile));
    if (bytes) {
        m_notesEditor->setPlainText(
            ui::toQString(std::string(bytes->begin(), bytes->end()), m_shell.language()));
    }
    auto* buttons = new QDialogButtonBox(dialog);
    QPushButton* save = buttons->addButton(ui::generalPrompt(m_shell, ui::General::Save),
                                           QDialogButtonBox::AcceptRole);
    buttons->addButton(ui::generalPrompt(m_shell, ui::General::Exit), QDialogButtonBox::RejectRole);
    connect(save, &QPushButton::clicked, this, [this] { saveNotes(); });
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::close);
    connect(dialog, &QObject::destroyed, this, [this] { m_notesEditor = nullptr; });
    auto* layout = new QVBoxLayout(dialog);
    layout->addWidget(m_notesEditor, 1);
    layout->addWidget(buttons);
    dialog->resize(640, 480);
    dialog->show();
    return m_notesEditor;
}

bool BmRipRpt::saveNotes() {
    if (m_notesEditor == nullptr) {
        return false;
    }
    // CR LF lines in the project's code page, as the other text files of the project.
    QString text = m_notesEditor->toPlainText();
    text.replace(QStringLiteral("\n"), QStringLiteral("\r\n"));
    const auto bytes = ui::fromQStringExact(text, m_shell.language());
    if (!bytes) {
        ui::tellUser(this, m_messageHook,
                     QStringLiteral("The notes hold a character that the project's language "
                                    "cannot keep in its files."));
        return false;
    }
    try {
        core::saveFileAtomically(core::resolveNoCase(m_shell.projectPath(), kNotesFile), *bytes);
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    }
    m_notesEditor->document()->setModified(false);
    return true;
}

} // namespace orvak::beams::forms
