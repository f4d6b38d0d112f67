// sheardsn: the stirrups of one beam, its stirrup settings stored in the beam.
#include "beams/forms/sheardsn_form.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QTableWidget>
#include <QVBoxLayout>
#include <cmath>

#include "beams/beam_edit.h"
#include "beams/beam_job.h"
#include "beams/forms/beam_form_links.h"
#include "beams/forms/bmanalysis_form.h"
#include "beams/forms/ldefcalc_form.h"
#include "beams/forms/stirrup_drawing.h"
#include "beams/stirrup_zones.h"
#include "core/codepage.h"
#include "core/error.h"
#include "core/file_util.h"
#include "jobs/beam_design_job.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"
#include "ui/text_viewer.h"

namespace orvak::beams::forms {

namespace {

constexpr std::string_view kPromptKey = "SHEARDSN";
constexpr std::size_t kCaption = 1;
constexpr std::size_t kBeamHeading = 2;
constexpr std::size_t kFirstLabel = 3; // stirrup diameter, spacing, bar diameter, bar count
constexpr std::size_t kOk = 7;
constexpr std::size_t kLtDef = 8;
constexpr std::size_t kBack = 9;
constexpr std::size_t kListing = 10;
constexpr std::size_t kExit = 11;
constexpr std::size_t kFirstHeading = 12; // the eight columns
constexpr std::size_t kFirstPlace = 20;   // left end, middle, right end
constexpr std::size_t kRefused = 23;
constexpr std::size_t kStored = 24;
constexpr std::size_t kNoBeam = 25;
constexpr std::size_t kNoListing = 26;
constexpr std::size_t kBelowLeast = 27;
constexpr std::size_t kZones = 28;
constexpr std::size_t kPromptCount = 28;

constexpr std::array<std::string_view, 4> kLabels = {
    "Stirrup diameter (mm)", "Largest stirrup spacing (cm, 0: d/2)",
    "Least top bars: diameter (mm)", "Least top bars: count"};
constexpr std::array<std::string_view, sheardsn::kColumnCount> kHeadings = {
    "Span", "Point", "Vu (t)", "Vc (t)", "Vs (t)", "Legs", "Ø (mm)", "s (cm)"};
constexpr std::array<std::string_view, 3> kPlaces = {"Left end", "Middle", "Right end"};

constexpr double kKgPerT = 1000.0;
constexpr QSize kFormSize(860, 620);

// A number or bar mark of a table, right-aligned in either direction (see numberCells).
QTableWidgetItem* number(const QString& text) {
    auto* item = new QTableWidgetItem(text);
    item->setTextAlignment(kNumberAlignment);
    return item;
}

QString tonnes(double kg) {
    return QString::number(kg / kKgPerT, 'f', 2);
}

} // namespace

sheardsn::sheardsn(shell::ShellState& shell, int floor, int beamNumber, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_floor(floor), m_beamNumber(beamNumber),
      m_beamLabel(new QLabel(this)), m_stirrupDiameter(new QLineEdit(this)),
      m_stirrupSpacing(new QLineEdit(this)), m_barDiameter(new QLineEdit(this)),
      m_barCount(new QLineEdit(this)), m_points(new QTableWidget(this)),
      m_drawingCaption(new QLabel(this)), m_drawing(new StirrupDrawing(this)),
      m_message(new QLabel(this)), m_ok(new QPushButton(this)), m_deflection(new QPushButton(this)),
      m_back(new QPushButton(this)), m_listing(new QPushButton(this)),
      m_exit(new QPushButton(this)) {
    setObjectName(QStringLiteral("sheardsn"));
    m_stirrupDiameter->setObjectName(QStringLiteral("StirupDTxt"));
    m_stirrupSpacing->setObjectName(QStringLiteral("StirupSpcTxt"));
    m_barDiameter->setObjectName(QStringLiteral("NgtvDTxt"));
    m_barCount->setObjectName(QStringLiteral("NgtvQntTxt"));
    m_points->setObjectName(QStringLiteral("ShearGrid"));
    m_drawing->setObjectName(QStringLiteral("StirrupDrawing"));
    m_message->setObjectName(QStringLiteral("MessageLbl"));
    m_ok->setObjectName(QStringLiteral("CmdOK"));
    m_deflection->setObjectName(QStringLiteral("CmdLtDef"));
    m_back->setObjectName(QStringLiteral("Cmdbackopt"));
    m_listing->setObjectName(QStringLiteral("CmdExt2"));
    m_exit->setObjectName(QStringLiteral("Cmdexit"));

    // Diameters and counts are whole numbers; the spacing may take one decimal.
    static const QRegularExpression whole(QStringLiteral("[0-9]{0,2}"));
    static const QRegularExpression spacing(QStringLiteral("[0-9]{0,3}(\\.[0-9]?)?"));
    for (QLineEdit* edit : {m_stirrupDiameter, m_barDiameter, m_barCount}) {
        edit->setValidator(new QRegularExpressionValidator(whole, edit));
        edit->setMaxLength(2);
        ui::fitToChars(edit, 4);
    }
    m_stirrupSpacing->setValidator(new QRegularExpressionValidator(spacing, m_stirrupSpacing));
    m_stirrupSpacing->setMaxLength(5);
    ui::fitToChars(m_stirrupSpacing, 6);

    m_points->setColumnCount(kColumnCount);
    m_points->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_points->verticalHeader()->hide();
    m_points->setFont(ui::listingFont());
    numberCells(m_points);
    m_message->setWordWrap(true);
    QFont bold = m_beamLabel->font();
    bold.setBold(true);
    m_beamLabel->setFont(bold);

    for (QLabel*& label : m_labels) {
        label = new QLabel(this);
    }
    auto* stirrups = new QFormLayout;
    stirrups->addRow(m_labels[0], m_stirrupDiameter);
    stirrups->addRow(m_labels[1], m_stirrupSpacing);
    auto* bars = new QFormLayout;
    bars->addRow(m_labels[2], m_barDiameter);
    bars->addRow(m_labels[3], m_barCount);
    auto* fields = new QHBoxLayout;
    fields->addLayout(stirrups);
    fields->addSpacing(24);
    fields->addLayout(bars);
    fields->addStretch(1);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {m_ok, m_deflection, m_back, m_listing}) {
        buttons->addWidget(b);
    }
    buttons->addStretch(1);
    buttons->addWidget(m_exit);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_beamLabel);
    layout->addLayout(fields);
    layout->addWidget(m_points, 1);
    layout->addWidget(m_drawingCaption);
    layout->addWidget(m_drawing);
    layout->addWidget(m_message);
    layout->addLayout(buttons);

    connect(m_ok, &QPushButton::clicked, this, [this] { store(); });
    connect(m_deflection, &QPushButton::clicked, this, [this] { openLongTermDeflection(); });
    connect(m_back, &QPushButton::clicked, this, [this] { backToAnalysis(); });
    connect(m_listing, &QPushButton::clicked, this, [this] { showListing(); });
    connect(m_exit, &QPushButton::clicked, this, [this] { ui::closeForm(this); });

    readPrompts();
    refresh();
}

QString sheardsn::prompt(std::size_t n, std::string_view english) const {
    return ui::formPrompt(m_prompts, n, english, m_shell.language());
}

QString sheardsn::messageText() const {
    return m_message->text();
}

void sheardsn::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    setWindowTitle(prompt(kCaption, "Shear design"));
    for (std::size_t k = 0; k < m_labels.size(); ++k) {
        m_labels[k]->setText(prompt(kFirstLabel + k, kLabels[k]));
    }
    QStringList headings;
    for (std::size_t k = 0; k < kHeadings.size(); ++k) {
        headings << prompt(kFirstHeading + k, kHeadings[k]);
    }
    m_points->setHorizontalHeaderLabels(headings);
    m_ok->setText(prompt(kOk, "OK"));
    m_deflection->setText(prompt(kLtDef, "Long time deflection"));
    m_back->setText(prompt(kBack, "Back to the analysis"));
    m_listing->setText(prompt(kListing, "Shear listing"));
    m_exit->setText(prompt(kExit, "Exit"));
    m_drawingCaption->setText(prompt(kZones, "Stirrup zones (lengths in m)"));
    if (m_record) {
        m_beamLabel->setText(prompt(kBeamHeading, "Floor %1, beam %2: %3")
                                 .arg(m_floor)
                                 .arg(m_beamNumber)
                                 .arg(ui::toQString(m_record->name, m_shell.language())));
        showDesign();
    }
}

void sheardsn::refresh() {
    m_record.reset();
    m_message->clear();
    try {
        m_record = readStoredBeam(m_shell.projectPath(), m_floor, m_beamNumber);
    } catch (const FileError& e) {
        m_message->setText(QString::fromUtf8(e.what()));
    }
    const bool found = m_record.has_value();
    for (QWidget* w :
         std::initializer_list<QWidget*>{m_stirrupDiameter, m_stirrupSpacing, m_barDiameter,
                                         m_barCount, m_ok, m_deflection, m_back, m_listing}) {
        w->setEnabled(found);
    }
    if (!found) {
        m_points->setRowCount(0);
        m_drawing->setBeam({}, {}, {});
        if (m_message->text().isEmpty()) {
            m_message->setText(
                prompt(kNoBeam, "Floor %1 has no beam %2.").arg(m_floor).arg(m_beamNumber));
        }
        return;
    }
    m_beamLabel->setText(prompt(kBeamHeading, "Floor %1, beam %2: %3")
                             .arg(m_floor)
                             .arg(m_beamNumber)
                             .arg(ui::toQString(m_record->name, m_shell.language())));
    showFields();
    showDesign();
}

void sheardsn::showFields() {
    const BeamSettings& s = m_record->settings;
    m_stirrupDiameter->setText(QString::number(static_cast<double>(s.SDIAMTXT)));
    m_stirrupSpacing->setText(QString::number(static_cast<double>(s.SSPCTXT)));
    m_barDiameter->setText(QString::number(s.MINUPSD));
    m_barCount->setText(QString::number(s.MINUPSQ));
}

void sheardsn::showDesign() {
    m_points->setRowCount(0);
    StoredDesign d;
    try {
        d = designInMemory(*m_record, storedScheme(*m_record), m_shell.generalFolder());
    } catch (const InputError& e) {
        m_message->setText(QString::fromUtf8(e.what()));
        m_drawing->setBeam({}, {}, {});
        return;
    } catch (const FileError& e) {
        m_message->setText(QString::fromUtf8(e.what()));
        m_drawing->setBeam({}, {}, {});
        return;
    }
    if (!d.analysis.ok()) {
        // An unstable or invalid beam has no shears to design for: the engine's sentence.
        m_message->setText(d.analysis.status == AnalysisStatus::InvalidInput
                               ? asSentence(d.analysis.message)
                               : QString::fromStdString(d.analysis.message));
        m_drawing->setBeam({}, {}, {});
        return;
    }
    const std::vector<ShearPoint>& pts = d.design.shearPoints;
    m_points->setRowCount(static_cast<int>(pts.size()));
    for (std::size_t k = 0; k < pts.size(); ++k) {
        const ShearPoint& sp = pts[k];
        const ShearResult& r = sp.shear;
        const int row = static_cast<int>(k);
        const auto place = static_cast<std::size_t>(sp.place);
        m_points->setItem(row, Span, number(place == 0 ? QString::number(sp.span + 1) : QString()));
        m_points->setItem(row, Point,
                          new QTableWidgetItem(prompt(kFirstPlace + place, kPlaces[place])));
        m_points->setItem(row, Vu, number(tonnes(sp.vuKg)));
        m_points->setItem(row, Vc, number(tonnes(r.vcKg)));
        m_points->setItem(row, Vs, number(tonnes(r.vsKg)));
        if (r.ok()) {
            m_points->setItem(row, Legs, number(QString::number(r.legs)));
            m_points->setItem(row, Diameter, number(QString::number(r.diameterMm, 'f', 0)));
            m_points->setItem(row, Spacing,
                              number(QString::number(placedSpacingCm(r.spacingCm), 'f', 1)));
        } else {
            // The listing's mark of a section too small in shear.
            QTableWidgetItem* mark = number(QStringLiteral("******"));
            mark->setForeground(QColor(0xB0, 0, 0));
            mark->setToolTip(QString::fromStdString(r.message));
            m_points->setItem(row, Spacing, mark);
        }
    }
    m_points->resizeColumnsToContents();
    m_points->resizeRowsToContents();

    std::vector<bool> supported;
    for (const StoredSupport& s : m_record->supports) {
        supported.push_back(supportFromCodes(s.code, s.second).restrainsDisplacement);
    }
    m_drawing->setBeam(d.spanLengthsCm, supported, stirrupZones(d.design, d.spanLengthsCm));
    QString failures;
    for (const std::string& f : d.design.failures) {
        failures +=
            (failures.isEmpty() ? QString() : QStringLiteral("\n")) + QString::fromStdString(f);
    }
    if (!failures.isEmpty()) {
        m_message->setText(failures);
    }
}

bool sheardsn::store() {
    if (!m_record) {
        return false;
    }
    BeamRecord record = *m_record;
    BeamSettings& s = record.settings;
    s.SDIAMTXT = m_stirrupDiameter->text().toFloat();
    s.SSPCTXT = m_stirrupSpacing->text().toFloat();
    s.MINUPSD = static_cast<std::int16_t>(m_barDiameter->text().toInt());
    s.MINUPSQ = static_cast<std::int16_t>(m_barCount->text().toInt());
    std::string problem = validateBeam(record);
    QString refusal = QString::fromStdString(problem);
    // A largest spacing under the least one could never be met: the diameter would grow
    // to its cap and the design still fail.
    if (problem.empty() && s.SSPCTXT > 0.0f && s.MinSSPCTXT > 0.0f && s.SSPCTXT < s.MinSSPCTXT) {
        refusal = prompt(kBelowLeast, "the largest stirrup spacing must not be below the least "
                                      "spacing of the beam, %1 cm")
                      .arg(static_cast<double>(s.MinSSPCTXT));
    }
    if (!refusal.isEmpty()) {
        ui::tellUser(this, m_messageHook, prompt(kRefused, "Nothing was stored: %1.").arg(refusal));
        return false;
    }
    try {
        beams::storeBeam(m_shell.projectPath(), m_floor, record);
        m_record = record;
        const jobs::ElementReport report =
            jobs::designStoredBeam(m_shell.projectPath(), m_shell.generalFolder(), m_floor,
                                   m_beamNumber, storedScheme(record),
                                   core::codePageForLanguage(m_shell.language()));
        if (report.status == jobs::ElementStatus::NotDesigned) {
            ui::tellUser(this, m_messageHook,
                         QString::fromStdString(report.failures.empty() ? std::string()
                                                                        : report.failures[0]));
            refresh();
            return false;
        }
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    } catch (const InputError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    }
    refresh();
    const QString done = prompt(kStored, "The stirrups were stored and the beam designed again.");
    if (m_message->text().isEmpty()) {
        m_message->setText(done);
    }
    emit saved(done);
    return true;
}

QWidget* sheardsn::openLongTermDeflection() {
    auto* form = new LDefCalc(m_shell);
    form->setMessageHook(m_messageHook);
    form->chooseBeam(m_floor, m_beamNumber);
    ui::showBeside(this, form, kFormSize);
    return form;
}

QWidget* sheardsn::backToAnalysis() {
    QWidget* analysis = raiseOpenForm<BmAnalysis>(m_floor, m_beamNumber);
    if (analysis == nullptr) {
        auto* form = new BmAnalysis(m_shell, m_floor, m_beamNumber);
        form->setMessageHook(m_messageHook);
        ui::showBeside(this, form, kFormSize);
        analysis = form;
    }
    ui::closeForm(this);
    return analysis;
}

QWidget* sheardsn::showListing() {
    if (!m_record) {
        return nullptr;
    }
    const std::filesystem::path file =
        m_shell.projectPath() / (listingBaseName(*m_record) + std::string(kShearListingExt));
    const auto bytes = core::readWholeFile(file);
    if (!bytes) {
        ui::tellUser(this, m_messageHook,
                     prompt(kNoListing, "The beam has no shear listing yet: press OK to design "
                                        "it."));
        return nullptr;
    }
    ui::EditAsc* viewer = ui::openReportViewer(
        this, m_shell, QString::fromStdString(file.filename().string()),
        ui::toQString(std::string(bytes->begin(), bytes->end()), m_shell.language()),
        m_messageHook);
    ui::setSheetTitleBlock(viewer, m_shell, QString::fromStdString(file.stem().string()));
    return viewer;
}

} // namespace orvak::beams::forms
