// LDefCalc: the long-term deflection of a chosen beam, its data stored in the beam.
#include "beams/forms/ldefcalc_form.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "bars/bar_tables.h"
#include "beams/beam_analysis.h"
#include "beams/beam_design.h"
#include "beams/beam_edit.h"
#include "beams/beam_job.h"
#include "beams/forms/beam_choice.h"
#include "beams/forms/beam_form_links.h"
#include "beams/load_cases.h"
#include "beams/long_term_deflection.h"
#include "core/codepage.h"
#include "core/error.h"
#include "jobs/beam_design_job.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"

namespace orvak::beams::forms {

namespace {

constexpr std::string_view kPromptKey = "LDEFCALC";
constexpr std::size_t kCaption = 1;
constexpr std::size_t kFirstLabel = 2; // floor, beam, sustained, months, divisor
constexpr std::size_t kCalculate = 7;
constexpr std::size_t kExit = 8;
constexpr std::size_t kFirstHeading = 9; // the nine columns
constexpr std::size_t kRefused = 18;
constexpr std::size_t kCalculated = 19;
constexpr std::size_t kNoBeam = 20;
constexpr std::size_t kPromptCount = 20;

constexpr std::array<std::string_view, 5> kLabels = {"Floor", "Beam", "Sustained live load (%)",
                                                     "Live load duration (months, 0: 60)",
                                                     "Allowed deflection L / n: n"};
constexpr std::array<std::string_view, LDefCalc::kColumnCount> kHeadings = {
    "#",     "InitDef", "Igr/10^5", "Mcr/10^5",        "Icr/10^5",
    "DLDef", "LLDef",   "TotDef",   "Allowed L/n (cm)"};

// What the form accepts; the divisor within the bounds of the beam settings.
constexpr double kMostMonths = 1200.0;

} // namespace

LDefCalc::LDefCalc(shell::ShellState& shell, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_choice(new BeamChoice(shell, this, &m_messageHook)),
      m_sustained(new QLineEdit(this)), m_months(new QLineEdit(this)),
      m_divisor(new QLineEdit(this)), m_allowed(new QLabel(this)),
      m_results(new QTableWidget(this)), m_calculate(new QPushButton(this)),
      m_exit(new QPushButton(this)) {
    setObjectName(QStringLiteral("LDefCalc"));
    m_sustained->setObjectName(QStringLiteral("SustTxt"));
    m_months->setObjectName(QStringLiteral("MonthsTxt"));
    m_divisor->setObjectName(QStringLiteral("DeflTxt"));
    m_allowed->setObjectName(QStringLiteral("AllowedLbl"));
    m_results->setObjectName(QStringLiteral("ResultGrid"));
    m_calculate->setObjectName(QStringLiteral("CmdCalc"));
    m_exit->setObjectName(QStringLiteral("exit"));

    static const QRegularExpression decimals(QStringLiteral("[0-9]*\\.?[0-9]*"));
    static const QRegularExpression whole(QStringLiteral("[0-9]*"));
    m_sustained->setValidator(new QRegularExpressionValidator(decimals, m_sustained));
    m_months->setValidator(new QRegularExpressionValidator(decimals, m_months));
    m_divisor->setValidator(new QRegularExpressionValidator(whole, m_divisor));
    for (QLineEdit* edit : {m_sustained, m_months, m_divisor}) {
        edit->setMaxLength(7);
        ui::fitToChars(edit, 8);
    }
    m_results->setColumnCount(kColumnCount);
    m_results->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_results->verticalHeader()->hide();
    m_results->setFont(ui::listingFont());

    auto* fields = new QFormLayout;
    for (QLabel*& label : m_labels) {
        label = new QLabel(this);
    }
    fields->addRow(m_labels[0], m_choice->floors());
    fields->addRow(m_labels[1], m_choice->beams());
    fields->addRow(m_labels[2], m_sustained);
    fields->addRow(m_labels[3], m_months);
    fields->addRow(m_labels[4], m_divisor);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_calculate);
    buttons->addWidget(m_allowed, 1);
    buttons->addWidget(m_exit);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addLayout(buttons);
    layout->addWidget(m_results, 1);

    connect(m_choice, &BeamChoice::beamChanged, this, [this] { showBeam(); });
    connect(m_calculate, &QPushButton::clicked, this, [this] { calculate(); });
    connect(m_exit, &QPushButton::clicked, this, [this] { ui::closeForm(this); });

    readPrompts();
    m_choice->load();
}

QComboBox* LDefCalc::floorCombo() const {
    return m_choice->floors();
}

QComboBox* LDefCalc::beamCombo() const {
    return m_choice->beams();
}

bool LDefCalc::chooseBeam(int floor, int beamNumber) {
    return m_choice->chooseBeam(floor, beamNumber);
}

QString LDefCalc::prompt(std::size_t n, std::string_view english) const {
    return ui::formPrompt(m_prompts, n, english, m_shell.language());
}

void LDefCalc::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    setWindowTitle(prompt(kCaption, "Long time deflection"));
    for (std::size_t k = 0; k < m_labels.size(); ++k) {
        m_labels[k]->setText(prompt(kFirstLabel + k, kLabels[k]));
    }
    QStringList headings;
    for (std::size_t k = 0; k < kHeadings.size(); ++k) {
        headings << prompt(kFirstHeading + k, kHeadings[k]);
    }
    m_results->setHorizontalHeaderLabels(headings);
    m_calculate->setText(prompt(kCalculate, "Calculate"));
    m_exit->setText(prompt(kExit, "Exit"));
}

void LDefCalc::showBeam() {
    m_results->setRowCount(0);
    m_allowed->clear();
    const BeamRecord* chosen = m_choice->beam();
    if (chosen == nullptr) {
        return;
    }
    const BeamRecord& b = *chosen;
    m_sustained->setText(QString::number(static_cast<double>(b.sustainedLivePercent)));
    m_months->setText(QString::number(static_cast<double>(b.liveLoadMonths)));
    const double divisor =
        b.settings.DeflTxt > 0.0f ? b.settings.DeflTxt : defaultBeamSettings().DeflTxt;
    m_divisor->setText(QString::number(divisor));
}

QString LDefCalc::allowedText() const {
    return m_allowed->text();
}

bool LDefCalc::calculate() {
    if (m_choice->beam() == nullptr) {
        ui::tellUser(this, m_messageHook, prompt(kNoBeam, "Choose a floor and a beam first."));
        return false;
    }
    const double sustained = m_sustained->text().toDouble();
    const double months = m_months->text().toDouble();
    const double divisor = m_divisor->text().toDouble();
    BeamRecord record = *m_choice->beam();
    record.sustainedLivePercent = static_cast<float>(sustained);
    record.liveLoadMonths = static_cast<float>(months);
    record.settings.DeflTxt = static_cast<float>(divisor);
    // The checks of a stored beam, and a duration no building waits for.
    std::string problem = validateBeam(record);
    if (problem.empty() && months > kMostMonths) {
        problem = "the live load duration must be 0 to 1200 months";
    }
    if (!problem.empty()) {
        ui::tellUser(
            this, m_messageHook,
            prompt(kRefused, "Nothing was stored: %1.").arg(QString::fromStdString(problem)));
        return false;
    }

    const std::filesystem::path project = m_shell.projectPath();
    const int floor = m_choice->floor();
    try {
        // The values are the beam's own: stored first, in place, as any edit of the beam.
        record = storeBeam(project, floor, record);
        m_choice->replaceBeam(record);

        const int scheme = storedScheme(record);
        const jobs::ElementReport report =
            jobs::designStoredBeam(project, m_shell.generalFolder(), floor, record.number, scheme,
                                   core::codePageForLanguage(m_shell.language()));
        if (report.status == jobs::ElementStatus::NotDesigned) {
            ui::tellUser(
                this, m_messageHook,
                QString::fromUtf8(report.failures.empty() ? "" : report.failures[0].c_str()));
            return false;
        }

        // The members as the listing shows them (the same engine, nothing written).
        const StoredDesign shown = designInMemory(record, scheme, m_shell.generalFolder());
        const DeflectionResult& d = shown.design.deflection;
        m_results->setRowCount(static_cast<int>(d.deflections.size()));
        for (std::size_t m = 0; m < d.deflections.size(); ++m) {
            const MemberDeflection& md = d.deflections[m];
            const DeflectionSection& section = d.members[m];
            const auto put = [&](int column, double value, int decimals) {
                auto* item = new QTableWidgetItem(QString::number(value, 'f', decimals));
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
                m_results->setItem(static_cast<int>(m), column, item);
            };
            put(Member, static_cast<double>(m + 1), 0);
            put(InitDef, md.initDefCm, 3);
            put(Igr, section.gross.ig / 1e5, 2);
            put(Mcr, section.gross.mcrKgCm / 1e5, 2);
            put(Icr, section.cracked.icr / 1e5, 2);
            put(DlDef, md.defDlCm, 3);
            put(LlDef, md.defLlCm, 3);
            put(TotDef, md.defLtCm, 3);
            put(Allowed, md.allowedCm, 3);
            if (md.exceeds) {
                m_results->item(static_cast<int>(m), TotDef)->setForeground(QColor(0xB0, 0, 0));
            }
        }
        m_results->resizeColumnsToContents();
        m_allowed->setText(
            QStringLiteral("L/%1    TF = %2").arg(d.divisor, 0, 'f', 0).arg(d.tf, 0, 'f', 3));
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    } catch (const InputError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    }
    emit saved(prompt(kCalculated, "The deflection was calculated and the beam designed again."));
    return true;
}

} // namespace orvak::beams::forms
