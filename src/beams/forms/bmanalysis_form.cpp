// BmAnalysis: the load cases of one beam shown one by one, the envelope, and the design run.
#include "beams/forms/bmanalysis_form.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <cmath>

#include "bars/bar_tables.h"
#include "beams/beam_design.h"
#include "beams/beam_edit.h"
#include "beams/beam_job.h"
#include "beams/forms/beam_diagram.h"
#include "beams/forms/beam_form_links.h"
#include "beams/forms/sheardsn_form.h"
#include "beams/load_cases.h"
#include "core/codepage.h"
#include "core/error.h"
#include "jobs/beam_design_job.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"

namespace orvak::beams::forms {

namespace {

constexpr std::string_view kPromptKey = "BMANALY";
constexpr std::size_t kCaption = 1;
constexpr std::size_t kBeamHeading = 2;
constexpr std::size_t kSchemeLabel = 3;
constexpr std::size_t kFirstScheme = 4; // the three schemes
constexpr std::size_t kNext = 7;
constexpr std::size_t kDesign = 8;
constexpr std::size_t kFinish = 9;
constexpr std::size_t kShearDesign = 10;
constexpr std::size_t kExit = 11;
constexpr std::size_t kDiagramsTab = 12;
constexpr std::size_t kDeflectionTab = 13;
constexpr std::size_t kCaseDesignTab = 14;
constexpr std::size_t kMomentHeading = 15;
constexpr std::size_t kShearHeading = 16;
constexpr std::size_t kEnvelope = 17;
constexpr std::size_t kCaseOf = 18;
constexpr std::size_t kEverySpan = 19;
constexpr std::size_t kSomeSpans = 20;
constexpr std::size_t kNoSpan = 21;
constexpr std::size_t kMax = 22;
constexpr std::size_t kMin = 23;
constexpr std::size_t kFirstHeading = 24; // the ten columns of a case's design
constexpr std::size_t kFirstPlace = 34;   // left end, middle, right end
constexpr std::size_t kPreview = 37;
constexpr std::size_t kDesigned = 38;
constexpr std::size_t kChecksFailed = 39;
constexpr std::size_t kNoBeam = 40;
constexpr std::size_t kLargestDeflection = 41;
constexpr std::size_t kPromptCount = 41;

constexpr std::array<std::string_view, BmAnalysis::kColumnCount> kHeadings = {
    "Span",     "Point",           "Top Mu (t·m)",    "Top As (cm²)",
    "Top bars", "Bottom Mu (t·m)", "Bottom As (cm²)", "Bottom bars",
    "Vu (t)",   "Stirrups"};
constexpr std::array<std::string_view, 3> kPlaces = {"Left end", "Middle", "Right end"};

// The engine keeps kg·cm and kg; the engineer reads t·m and t.
constexpr double kKgCmPerTm = 100000.0;
constexpr double kKgPerT = 1000.0;
constexpr int kForceDecimals = 2;
constexpr int kDeflectionDecimals = 2;
// Values printed on the diagrams below this (in their unit) would only print 0.00.
constexpr double kUnprinted = 0.005;

// The labels of the deflection view, the same in every language.
const QString kElastic = QStringLiteral("Elastic");
const QString kDead = QStringLiteral("D.L");
const QString kLive = QStringLiteral("L.L");
const QString kTotal = QStringLiteral("D.L+L.L");
const QString kDeflectionAxis = QStringLiteral("D.F(mm)");

const QColor kMomentColor(0x1F, 0x4E, 0x9A);
const QColor kShearColor(0x9A, 0x3B, 0x1F);
const QColor kMinColor(0x2E, 0x7D, 0x32);
const QColor kDeadColor(0x55, 0x55, 0x55);
const QColor kLiveColor(0x1F, 0x7A, 0xB4);
const QColor kTotalColor(0xB0, 0x20, 0x20);

QString latin1(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

// Station values of a case in display units.
std::vector<double> stationValues(const CaseResult& c, bool moment) {
    std::vector<double> out;
    out.reserve(c.stations.size());
    for (const Station& s : c.stations) {
        out.push_back(moment ? s.momentKgCm / kKgCmPerTm : s.shearKg / kKgPerT);
    }
    return out;
}

std::vector<double> scaled(const std::vector<double>& values, double divisor) {
    std::vector<double> out;
    out.reserve(values.size());
    for (const double v : values) {
        out.push_back(v / divisor);
    }
    return out;
}

void addLabel(DiagramCurve& curve, double xCm, double value, int decimals) {
    if (std::isfinite(value) && std::abs(value) >= kUnprinted) {
        curve.labels.push_back({xCm, value, diagramNumber(value, decimals)});
    }
}

// Distance of each joint from the beam's left end.
std::vector<double> jointPositions(const std::vector<double>& spans) {
    std::vector<double> x{0.0};
    for (const double l : spans) {
        x.push_back(x.back() + l);
    }
    return x;
}

bool interior(double xCm, double spanCm) {
    return xCm > 1e-6 * spanCm && xCm < spanCm * (1.0 - 1e-6);
}

// A number or bar mark of a table, right-aligned in either direction (see numberCells).
QTableWidgetItem* number(const QString& text) {
    auto* item = new QTableWidgetItem(text);
    item->setTextAlignment(kNumberAlignment);
    return item;
}

QString barsText(const BarChoice& bars) {
    return bars.found && bars.count > 0
               ? QStringLiteral("%1\u00D8%2").arg(bars.count).arg(bars.diameterMm, 0, 'f', 0)
               : QString();
}

} // namespace

BmAnalysis::BmAnalysis(shell::ShellState& shell, int floor, int beamNumber, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_floor(floor), m_beamNumber(beamNumber),
      m_beamLabel(new QLabel(this)), m_schemeLabel(new QLabel(this)), m_scheme(new QComboBox(this)),
      m_caseLabel(new QLabel(this)), m_tabs(new QTabWidget(this)), m_moment(new BeamDiagram),
      m_shear(new BeamDiagram), m_deflection(new BeamDiagram), m_deflectionCaption(new QLabel),
      m_deflectionTable(new QTableWidget), m_caseDesign(new QTableWidget),
      m_message(new QLabel(this)), m_next(new QPushButton(this)), m_design(new QPushButton(this)),
      m_finish(new QPushButton(this)), m_shearButton(new QPushButton(this)),
      m_exit(new QPushButton(this)) {
    setObjectName(QStringLiteral("BmAnalysis"));
    m_scheme->setObjectName(QStringLiteral("SchemeCombo"));
    m_caseLabel->setObjectName(QStringLiteral("CaseLbl"));
    m_tabs->setObjectName(QStringLiteral("ViewTabs"));
    m_moment->setObjectName(QStringLiteral("MomentDiagram"));
    m_shear->setObjectName(QStringLiteral("ShearDiagram"));
    m_deflection->setObjectName(QStringLiteral("DeflectionDiagram"));
    m_deflectionTable->setObjectName(QStringLiteral("DeflGrid"));
    m_caseDesign->setObjectName(QStringLiteral("CaseDesignGrid"));
    m_message->setObjectName(QStringLiteral("MessageLbl"));
    m_next->setObjectName(QStringLiteral("CmdNext"));
    m_design->setObjectName(QStringLiteral("CmdDesign"));
    m_finish->setObjectName(QStringLiteral("CmdFinish"));
    m_shearButton->setObjectName(QStringLiteral("CmdShear"));
    m_exit->setObjectName(QStringLiteral("Cmdexit"));

    QFont bold = m_caseLabel->font();
    bold.setBold(true);
    m_caseLabel->setFont(bold);
    m_message->setWordWrap(true);
    for (QTableWidget* t : {m_deflectionTable, m_caseDesign}) {
        t->setEditTriggers(QAbstractItemView::NoEditTriggers);
        t->verticalHeader()->hide();
        t->setFont(ui::listingFont());
        numberCells(t);
    }
    m_caseDesign->setColumnCount(kColumnCount);
    m_deflectionTable->setColumnCount(4);

    auto* diagrams = new QWidget;
    auto* diagramLayout = new QVBoxLayout(diagrams);
    diagramLayout->setContentsMargins(0, 0, 0, 0);
    diagramLayout->addWidget(m_moment, 1);
    diagramLayout->addWidget(m_shear, 1);
    auto* deflection = new QWidget;
    auto* deflectionLayout = new QVBoxLayout(deflection);
    deflectionLayout->setContentsMargins(0, 0, 0, 0);
    deflectionLayout->addWidget(m_deflection, 3);
    deflectionLayout->addWidget(m_deflectionCaption);
    deflectionLayout->addWidget(m_deflectionTable, 1);
    m_tabs->addTab(diagrams, QString());
    m_tabs->addTab(deflection, QString());
    m_tabs->addTab(m_caseDesign, QString());

    auto* top = new QHBoxLayout;
    top->addWidget(m_beamLabel, 1);
    top->addWidget(m_schemeLabel);
    top->addWidget(m_scheme);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {m_next, m_design, m_finish, m_shearButton}) {
        buttons->addWidget(b);
    }
    buttons->addStretch(1);
    buttons->addWidget(m_exit);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_caseLabel);
    layout->addWidget(m_tabs, 1);
    layout->addWidget(m_message);
    layout->addLayout(buttons);

    for (int scheme = kMinCaseScheme; scheme <= kMaxCaseScheme; ++scheme) {
        m_scheme->addItem(QString(), scheme);
    }
    connect(m_scheme, &QComboBox::currentIndexChanged, this, [this] { start(); });
    connect(m_next, &QPushButton::clicked, this, [this] { nextCase(); });
    connect(m_design, &QPushButton::clicked, this, [this] { designThisCase(); });
    connect(m_finish, &QPushButton::clicked, this, [this] { finishAllCases(); });
    connect(m_shearButton, &QPushButton::clicked, this, [this] { openShearDesign(); });
    connect(m_exit, &QPushButton::clicked, this, [this] { ui::closeForm(this); });

    try {
        m_record = readStoredBeam(m_shell.projectPath(), m_floor, m_beamNumber);
    } catch (const FileError& e) {
        showMessage(QString::fromUtf8(e.what()));
    }
    readPrompts();
    if (m_record) {
        // The scheme the beam was last designed under, else the full live-load pattern.
        m_scheme->blockSignals(true);
        m_scheme->setCurrentIndex(storedScheme(*m_record) - kMinCaseScheme);
        m_scheme->blockSignals(false);
    } else if (m_message->text().isEmpty()) {
        showMessage(prompt(kNoBeam, "Floor %1 has no beam %2.").arg(m_floor).arg(m_beamNumber));
    }
    start();
}

QString BmAnalysis::prompt(std::size_t n, std::string_view english) const {
    return ui::formPrompt(m_prompts, n, english, m_shell.language());
}

void BmAnalysis::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    setWindowTitle(prompt(kCaption, "Beam analysis"));
    m_schemeLabel->setText(prompt(kSchemeLabel, "Load cases"));
    for (int k = 0; k < m_scheme->count(); ++k) {
        const int scheme = kMinCaseScheme + k;
        m_scheme->setItemText(
            k, QStringLiteral("%1: %2").arg(scheme).arg(
                   prompt(kFirstScheme + static_cast<std::size_t>(k), caseSchemeName(scheme))));
    }
    m_next->setText(prompt(kNext, "&Next case"));
    m_design->setText(prompt(kDesign, "&Design this case"));
    m_finish->setText(prompt(kFinish, "&Finish all cases"));
    m_shearButton->setText(prompt(kShearDesign, "&Shear design"));
    m_exit->setText(prompt(kExit, "Exit"));
    m_tabs->setTabText(0, prompt(kDiagramsTab, "Diagrams"));
    m_tabs->setTabText(1, prompt(kDeflectionTab, "Deflection view"));
    m_tabs->setTabText(2, prompt(kCaseDesignTab, "Design of this case"));
    QStringList headings;
    for (std::size_t k = 0; k < kHeadings.size(); ++k) {
        headings << prompt(kFirstHeading + k, kHeadings[k]);
    }
    m_caseDesign->setHorizontalHeaderLabels(headings);
    m_deflectionTable->setHorizontalHeaderLabels(
        {prompt(kFirstHeading, kHeadings[0]), kDead, kLive, kTotal});
    m_deflectionCaption->setText(
        prompt(kLargestDeflection, "Largest deflection of each span (mm)"));
    if (m_record) {
        m_beamLabel->setText(prompt(kBeamHeading, "Floor %1, beam %2: %3")
                                 .arg(m_floor)
                                 .arg(m_beamNumber)
                                 .arg(ui::toQString(m_record->name, m_shell.language())));
    }
    if (m_finished) {
        showEnvelope();
    } else if (m_case >= 0) {
        showCase(m_case);
    }
}

int BmAnalysis::caseCount() const {
    return static_cast<int>(m_analysis.cases.size());
}

QString BmAnalysis::caseText() const {
    return m_caseLabel->text();
}

QString BmAnalysis::messageText() const {
    return m_message->text();
}

void BmAnalysis::showMessage(const QString& text) {
    m_message->setText(text);
}

void BmAnalysis::enableSteps() {
    const bool analysed = m_analysis.ok() && caseCount() > 0;
    m_next->setEnabled(analysed && !m_finished && m_case + 1 < caseCount());
    m_design->setEnabled(analysed && !m_finished && m_case >= 0);
    m_finish->setEnabled(analysed);
    m_shearButton->setEnabled(m_finished);
}

void BmAnalysis::start() {
    m_case = -1;
    m_finished = false;
    m_analysis = BeamAnalysisResult{};
    m_moment->clearCurves();
    m_shear->clearCurves();
    m_deflection->clearCurves();
    m_deflectionTable->setRowCount(0);
    m_caseDesign->setRowCount(0);
    m_caseLabel->clear();
    if (m_record) {
        m_message->clear();
        const int scheme = m_scheme->currentData().toInt();
        if (std::string problem = validateBeam(*m_record); !problem.empty()) {
            showMessage(asSentence(problem));
        } else {
            m_analysis = analyzeBeam(analysisInput(*m_record, scheme));
            if (!m_analysis.ok()) {
                // An unstable or invalid beam: the engine's sentence, and nothing drawn.
                showMessage(QString::fromStdString(m_analysis.message));
            }
        }
    }
    std::vector<double> spans;
    std::vector<bool> supported;
    if (m_record && m_analysis.ok()) {
        for (const StoredSpan& s : m_record->spans) {
            spans.push_back(s.lengthM * 100.0);
        }
        for (const StoredSupport& s : m_record->supports) {
            supported.push_back(supportFromCodes(s.code, s.second).restrainsDisplacement);
        }
    }
    for (BeamDiagram* d : {m_moment, m_shear, m_deflection}) {
        d->setBeam(spans, supported);
    }
    if (m_analysis.ok() && caseCount() > 0) {
        showDeflections();
        showCase(0);
    }
    enableSteps();
}

void BmAnalysis::showCase(int index) {
    m_case = index;
    const CaseResult& c = m_analysis.cases[static_cast<std::size_t>(index)];
    const int n = static_cast<int>(c.spans.size());
    QString loaded;
    QStringList spans;
    for (int s = 0; s < n; ++s) {
        if (c.loadCase.spanLoaded(s)) {
            spans << QString::number(s + 1);
        }
    }
    if (spans.size() == n) {
        loaded = prompt(kEverySpan, "live load on every span");
    } else if (spans.isEmpty()) {
        loaded = prompt(kNoSpan, "no live load");
    } else {
        loaded =
            prompt(kSomeSpans, "live load on span(s) %1").arg(spans.join(QStringLiteral(", ")));
    }
    m_caseLabel->setText(
        prompt(kCaseOf, "Case %1 of %2: %3").arg(index + 1).arg(caseCount()).arg(loaded));

    std::vector<double> lengths;
    for (const StoredSpan& s : m_record->spans) {
        lengths.push_back(s.lengthM * 100.0);
    }
    const std::vector<double> joints = jointPositions(lengths);

    // Moments: the support moments, and the largest sagging and hogging inside each span.
    DiagramCurve moment{QString(), kMomentColor, stationValues(c, true), {}};
    for (std::size_t j = 0; j < c.supportMomentsKgCm.size(); ++j) {
        addLabel(moment, joints[j], c.supportMomentsKgCm[j] / kKgCmPerTm, kForceDecimals);
    }
    for (int s = 0; s < n; ++s) {
        const SpanForces& f = c.spans[static_cast<std::size_t>(s)];
        const double l = lengths[static_cast<std::size_t>(s)];
        if (f.maxMoment.momentKgCm > 0.0 && interior(f.maxMoment.xCm, l)) {
            addLabel(moment, joints[static_cast<std::size_t>(s)] + f.maxMoment.xCm,
                     f.maxMoment.momentKgCm / kKgCmPerTm, kForceDecimals);
        }
        if (f.minMoment.momentKgCm < 0.0 && interior(f.minMoment.xCm, l)) {
            addLabel(moment, joints[static_cast<std::size_t>(s)] + f.minMoment.xCm,
                     f.minMoment.momentKgCm / kKgCmPerTm, kForceDecimals);
        }
    }
    // Shears: both ends of every span, just inside it.
    DiagramCurve shear{QString(), kShearColor, stationValues(c, false), {}};
    for (int s = 0; s < n; ++s) {
        const SpanForces& f = c.spans[static_cast<std::size_t>(s)];
        addLabel(shear, joints[static_cast<std::size_t>(s)], f.shearLeftKg / kKgPerT,
                 kForceDecimals);
        addLabel(shear, joints[static_cast<std::size_t>(s) + 1], f.shearRightKg / kKgPerT,
                 kForceDecimals);
    }
    // Sagging moments are drawn below the axis, on the tension face, as the bars go.
    m_moment->setCurves(prompt(kMomentHeading, "Moment (t·m)"), QStringLiteral("t\u00B7m"),
                        BeamDiagram::Positive::Down, {std::move(moment)});
    m_shear->setCurves(prompt(kShearHeading, "Shear (t)"), QStringLiteral("t"),
                       BeamDiagram::Positive::Up, {std::move(shear)});
    enableSteps();
}

void BmAnalysis::showEnvelope() {
    const Envelope& e = m_analysis.envelope;
    std::vector<double> lengths;
    for (const StoredSpan& s : m_record->spans) {
        lengths.push_back(s.lengthM * 100.0);
    }
    const std::vector<double> joints = jointPositions(lengths);
    const QString maxName = prompt(kMax, "max");
    const QString minName = prompt(kMin, "min");

    DiagramCurve momentMax{maxName, kMomentColor, scaled(e.stationMomentMaxKgCm, kKgCmPerTm), {}};
    DiagramCurve momentMin{minName, kMinColor, scaled(e.stationMomentMinKgCm, kKgCmPerTm), {}};
    for (std::size_t j = 0; j < e.supportMomentMinKgCm.size(); ++j) {
        addLabel(momentMin, joints[j], e.supportMomentMinKgCm[j] / kKgCmPerTm, kForceDecimals);
    }
    for (std::size_t s = 0; s < e.spanMomentMax.size(); ++s) {
        if (e.spanMomentMax[s].value > 0.0) {
            addLabel(momentMax, joints[s] + e.spanMomentMax[s].xCm,
                     e.spanMomentMax[s].value / kKgCmPerTm, kForceDecimals);
        }
    }
    DiagramCurve shearMax{maxName, kShearColor, scaled(e.stationShearMaxKg, kKgPerT), {}};
    DiagramCurve shearMin{minName, kMinColor, scaled(e.stationShearMinKg, kKgPerT), {}};
    // Under downward loads the shear falls along a span: its left end is the largest, its
    // right end the smallest.
    for (std::size_t s = 0; s < lengths.size(); ++s) {
        const std::size_t first = s * kStationsPerSpan;
        const std::size_t last = first + kStationDivisions;
        if (last < e.stationShearMaxKg.size()) {
            addLabel(shearMax, joints[s], e.stationShearMaxKg[first] / kKgPerT, kForceDecimals);
            addLabel(shearMin, joints[s + 1], e.stationShearMinKg[last] / kKgPerT, kForceDecimals);
        }
    }
    m_caseLabel->setText(prompt(kEnvelope, "Envelope of the %1 cases").arg(caseCount()));
    m_moment->setCurves(prompt(kMomentHeading, "Moment (t·m)"), QStringLiteral("t\u00B7m"),
                        BeamDiagram::Positive::Down, {std::move(momentMax), std::move(momentMin)});
    m_shear->setCurves(prompt(kShearHeading, "Shear (t)"), QStringLiteral("t"),
                       BeamDiagram::Positive::Up, {std::move(shearMax), std::move(shearMin)});
}

void BmAnalysis::showDeflections() {
    const ServiceAnalysis& sv = m_analysis.service;
    std::vector<double> lengths;
    for (const StoredSpan& s : m_record->spans) {
        lengths.push_back(s.lengthM * 100.0);
    }
    const std::vector<double> joints = jointPositions(lengths);
    DiagramCurve dead{kDead, kDeadColor, sv.dead.stationDeflectionsMm, {}};
    DiagramCurve live{kLive, kLiveColor, sv.live.stationDeflectionsMm, {}};
    DiagramCurve total{kTotal, kTotalColor, sv.total.stationDeflectionsMm, {}};
    for (std::size_t s = 0; s < sv.total.maxDeflections.size() && s < lengths.size(); ++s) {
        addLabel(total, joints[s] + sv.total.maxDeflections[s].xCm,
                 sv.total.maxDeflections[s].deflectionMm, kDeflectionDecimals);
    }
    // Downward deflections are drawn downward.
    m_deflection->setCurves(kElastic, kDeflectionAxis, BeamDiagram::Positive::Down,
                            {std::move(dead), std::move(live), std::move(total)});

    m_deflectionTable->setRowCount(static_cast<int>(lengths.size()));
    const ServiceCase* states[3] = {&sv.dead, &sv.live, &sv.total};
    for (std::size_t s = 0; s < lengths.size(); ++s) {
        const int row = static_cast<int>(s);
        m_deflectionTable->setItem(row, 0, number(QString::number(s + 1)));
        for (int k = 0; k < 3; ++k) {
            const auto& maxima = states[k]->maxDeflections;
            const double v = s < maxima.size() ? maxima[s].deflectionMm : 0.0;
            m_deflectionTable->setItem(row, k + 1, number(diagramNumber(v, kDeflectionDecimals)));
        }
    }
    m_deflectionTable->resizeColumnsToContents();
    m_deflectionTable->resizeRowsToContents();
}

bool BmAnalysis::nextCase() {
    if (!m_analysis.ok() || m_finished || m_case + 1 >= caseCount()) {
        return false;
    }
    m_caseDesign->setRowCount(0);
    showCase(m_case + 1);
    return true;
}

bool BmAnalysis::designThisCase() {
    if (!m_record || !m_analysis.ok() || m_case < 0 || m_finished) {
        return false;
    }
    BeamDesignResult d;
    try {
        BeamAnalysisInput model = analysisInput(*m_record, m_scheme->currentData().toInt());
        d = designBeam(designInputFromRecord(
            *m_record, std::move(model), caseAnalysis(m_analysis, static_cast<std::size_t>(m_case)),
            designBarTable(m_shell.generalFolder()).rows));
    } catch (const InputError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    }
    const int n = static_cast<int>(m_record->spans.size());
    m_caseDesign->setRowCount(3 * n);
    for (int s = 0; s < n; ++s) {
        for (int k = 0; k < 3; ++k) {
            const auto place = static_cast<PointPlace>(k);
            const int row = 3 * s + k;
            m_caseDesign->setItem(row, Span, number(k == 0 ? QString::number(s + 1) : QString()));
            m_caseDesign->setItem(
                row, Point,
                new QTableWidgetItem(prompt(kFirstPlace + static_cast<std::size_t>(k),
                                            kPlaces[static_cast<std::size_t>(k)])));
            for (const FlexurePoint& fp : d.flexurePoints) {
                if (fp.span != s || fp.place != place) {
                    continue;
                }
                const int at = fp.hogging ? TopMoment : BottomMoment;
                m_caseDesign->setItem(
                    row, at, number(diagramNumber(fp.momentKgCm / kKgCmPerTm, kForceDecimals)));
                m_caseDesign->setItem(
                    row, at + 1, number(diagramNumber(fp.flexure.tensionAreaCm2, kForceDecimals)));
                m_caseDesign->setItem(row, at + 2, number(barsText(fp.tensionBars)));
            }
            for (const ShearPoint& sp : d.shearPoints) {
                if (sp.span != s || sp.place != place) {
                    continue;
                }
                m_caseDesign->setItem(row, Shear,
                                      number(diagramNumber(sp.vuKg / kKgPerT, kForceDecimals)));
                m_caseDesign->setItem(row, Stirrups,
                                      number(sp.shear.ok()
                                                 ? QStringLiteral("\u00D8%1 @ %2")
                                                       .arg(sp.shear.diameterMm, 0, 'f', 0)
                                                       .arg(placedSpacingCm(sp.shear.spacingCm))
                                                 : QStringLiteral("******")));
            }
        }
    }
    m_caseDesign->resizeColumnsToContents();
    m_caseDesign->resizeRowsToContents();
    m_tabs->setCurrentIndex(2);
    QString text = prompt(kPreview, "Case %1 designed alone: a preview, nothing was written. The "
                                    "listings take the envelope of all the cases (Finish all "
                                    "cases).")
                       .arg(m_case + 1);
    for (const std::string& f : d.failures) {
        text += QStringLiteral("\n") + QString::fromStdString(f);
    }
    showMessage(text);
    return true;
}

bool BmAnalysis::finishAllCases() {
    if (!m_record || !m_analysis.ok()) {
        return false;
    }
    const int scheme = m_scheme->currentData().toInt();
    m_finished = true;
    m_case = -1;
    m_caseDesign->setRowCount(0);
    showEnvelope();
    m_tabs->setCurrentIndex(0);
    enableSteps();
    try {
        // The beam remembers the scheme of its last analysis: the deflection and shear forms
        // design it again under the same cases.
        BeamRecord record = *m_record;
        record.caseScheme = static_cast<std::int16_t>(scheme);
        record.freeDofCount = static_cast<std::int16_t>(m_analysis.freeDofCount);
        if (!(record == *m_record)) {
            beams::storeBeam(m_shell.projectPath(), m_floor, record);
            m_record = record;
        }
        const jobs::ElementReport report = jobs::designStoredBeam(
            m_shell.projectPath(), m_shell.generalFolder(), m_floor, m_beamNumber, scheme,
            core::codePageForLanguage(m_shell.language()));
        QString text;
        if (report.status == jobs::ElementStatus::NotDesigned) {
            for (const std::string& f : report.failures) {
                text +=
                    (text.isEmpty() ? QString() : QStringLiteral("\n")) + QString::fromStdString(f);
            }
            showMessage(text);
            ui::tellUser(this, m_messageHook, text);
            m_shearButton->setEnabled(false);
            return false;
        }
        text = report.status == jobs::ElementStatus::Designed
                   ? prompt(kDesigned, "The beam was designed under scheme %1: its listings, "
                                       "report and steel were written.")
                         .arg(scheme)
                   : prompt(kChecksFailed, "The beam was designed under scheme %1; some checks "
                                           "failed:")
                         .arg(scheme);
        for (const std::string& f : report.failures) {
            text += QStringLiteral("\n") + QString::fromStdString(f);
        }
        for (const std::string& m : report.messages) {
            text += QStringLiteral("\n") + QString::fromStdString(m);
        }
        showMessage(text);
        emit saved(text.section(QLatin1Char('\n'), 0, 0));
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        m_shearButton->setEnabled(false);
        return false;
    } catch (const InputError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        m_shearButton->setEnabled(false);
        return false;
    }
    return true;
}

QWidget* BmAnalysis::openShearDesign() {
    if (auto* open = raiseOpenForm<sheardsn>(m_floor, m_beamNumber)) {
        open->refresh();
        return open;
    }
    auto* form = new sheardsn(m_shell, m_floor, m_beamNumber);
    ui::showBeside(this, form, QSize(860, 620));
    return form;
}

} // namespace orvak::beams::forms
