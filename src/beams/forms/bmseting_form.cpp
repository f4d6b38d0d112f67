// Bmseting: one field per setting, on the page where an engineer looks for it, written to
// BMSETING.DAT only when a design can use every value.
#include "beams/forms/bmseting_form.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <array>
#include <cmath>
#include <type_traits>

#include "beams/beam_edit.h"
#include "beams/forms/beam_form_links.h"
#include "core/error.h"
#include "ui/qt_text.h"
#include "ui/general_prompts.h"

namespace orvak::beams::forms {

namespace {

constexpr std::string_view kPromptKey = "BMSETING";
constexpr std::size_t kCaptionPrompt = 1;
constexpr std::size_t kFirstPagePrompt = 2; // four page titles
constexpr std::size_t kSavePrompt = 6;
constexpr std::size_t kDefaultsPrompt = 7;
constexpr std::size_t kExitPrompt = 8;
constexpr std::size_t kFirstFieldPrompt = 9; // one label per field, in stored order
constexpr std::size_t kSavedPrompt = 49;
constexpr std::size_t kRefusedPrompt = 50;
constexpr std::size_t kBeamSavedPrompt = 51;
constexpr std::size_t kBeamCaptionPrompt = 52;
constexpr std::size_t kPromptCount = 52;

enum Page { General, Checks, Bars, MainSteel };
constexpr std::array<std::string_view, 4> kPageNames = {"GNRLFrm", "DsgnFrm", "BarSetFrm",
                                                        "FrmMAINSTL"};
constexpr std::array<std::string_view, 4> kPageTitles = {"General", "Design checks",
                                                         "Bars and stirrups", "Main steel"};

struct FieldText {
    std::string_view name;
    Page page;
    std::string_view english;
};

// Every field in stored order, with its page and its English label.
constexpr std::array<FieldText, 40> kFieldTexts = {{
    {"MINUPSQ", MainSteel, "Least top bars: count"},
    {"MINUPSD", MainSteel, "Least top bars: diameter (mm)"},
    {"MINDNSQ", MainSteel, "Least bottom bars: count"},
    {"MINDNSD", MainSteel, "Least bottom bars: diameter (mm)"},
    {"MINDNSQC", MainSteel, "Bottom bars into the supports: count"},
    {"MINDNSDC", MainSteel, "Bottom bars into the supports: diameter (mm)"},
    {"MINDIST", Bars, "Least clear distance between bars (cm)"},
    {"MINAREA", Bars, "Least steel area of a bar row (cm2)"},
    {"CutNgtvBarsChk", Bars, "Cut the top bars where no longer needed"},
    {"MINLNGTV", Bars, "Shortest top bar (fraction of the span)"},
    {"MINDCALCNGTV", Bars, "Smallest top-bar diameter (mm)"},
    {"LIRONENDBL", Bars, "Top-bar extension, left end (fraction of the span)"},
    {"LIRONENDBR", Bars, "Top-bar extension, right end (fraction of the span)"},
    {"MINDCALC", MainSteel, "Smallest main-bar diameter (mm)"},
    {"MAXDCALC", MainSteel, "Largest main-bar diameter (mm)"},
    {"SDIAMTXT", Bars, "Stirrup diameter (mm)"},
    {"SSPCTXT", Bars, "Largest stirrup spacing (cm)"},
    {"MinSSPCTXT", Bars, "Smallest stirrup spacing (cm)"},
    {"WIDTHLNK", Bars, "Web width above which stirrups have four legs (cm)"},
    {"angleheight", Bars, "Bent bars: angle (degrees), hook lengths (cm)"},
    {"DSTXT", MainSteel, "Main-bar diameters offered to the design (mm)"},
    {"CONTBSTLCHK", Bars, "Carry the bottom bars over the supports"},
    {"FACDEADL", General, "Dead-load factor: loaded span, other spans"},
    {"FACDAYNL", General, "Live-load factor: loaded span, other spans"},
    {"DeflTxt", Checks, "Allowed deflection L / n: n"},
    {"FacRmaxTxt", General, "Largest steel ratio / balanced ratio (0: 0.5)"},
    {"FacRminTxt", General, "rho min = value / FY (0: 14.06)"},
    {"EsupBmFacTxt", General, "Moment factor at end supports on beams"},
    {"VsMinTxt", General, "Shear stress for least stirrups, kg/cm2 (0: 3.5)"},
    {"MomFiTxt", General, "Strength reduction factor, flexure (0: 0.9)"},
    {"ShearFiTxt", General, "Strength reduction factor, shear (0: 0.85)"},
    {"DevLenTxt", Checks, "Multiplier of the development length"},
    {"RedMomChk", General, "Design for the moment at the support face"},
    {"RedShrChk", General, "Design for the shear at d from the face"},
    {"LdfactTxt", General, "Moment factor at flagged end supports (0: 1.0)"},
    {"ShrContDpthTxt", General, "Critical shear section from the face (in d)"},
    {"MaxLenTxt", Checks, "Longest bar delivered (m)"},
    {"MinthicknessChk", Checks, "Check the least depth instead of the deflection"},
    {"LFacTxt", Checks, "Span multiplier of the least-depth check"},
    {"THIKTXT", Checks, "Divisors x of the least depth L / x"},
}};

std::size_t fieldIndex(std::string_view name) {
    for (std::size_t i = 0; i < kFieldTexts.size(); ++i) {
        if (kFieldTexts[i].name == name) {
            return i;
        }
    }
    return kFieldTexts.size();
}

// The on/off settings: names ending in "Chk" (CONTBSTLCHK spells it in capitals).
bool isFlag(std::string_view name) {
    if (name.size() <= 3) {
        return false;
    }
    const std::string_view end = name.substr(name.size() - 3);
    return end == "Chk" || end == "CHK";
}

// The shortest decimal that reads back as the same single: a setting shown and saved again
// unchanged keeps its value to the last bit.
QString shown(float v) {
    for (int digits = 6; digits < 9; ++digits) {
        const QString text = QString::number(static_cast<double>(v), 'g', digits);
        if (text.toFloat() == v) {
            return text;
        }
    }
    return QString::number(static_cast<double>(v), 'g', 9);
}

} // namespace

Bmseting::Bmseting(shell::ShellState& shell, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_tabs(new QTabWidget(this)), m_save(new QPushButton(this)),
      m_defaults(new QPushButton(this)), m_exit(new QPushButton(this)) {
    setObjectName(QStringLiteral("Bmseting"));
    m_tabs->setObjectName(QStringLiteral("MTabStrip"));
    m_tabs->tabBar()->setObjectName(QStringLiteral("TabStrip1"));
    m_save->setObjectName(QStringLiteral("savebmseting"));
    m_defaults->setObjectName(QStringLiteral("DefCmd"));
    m_exit->setObjectName(QStringLiteral("exitm"));

    std::array<QGridLayout*, 4> grids{};
    for (std::size_t p = 0; p < kPageNames.size(); ++p) {
        auto* page = new QWidget(m_tabs);
        page->setObjectName(QString::fromLatin1(kPageNames[p].data(),
                                                static_cast<qsizetype>(kPageNames[p].size())));
        grids[p] = new QGridLayout(page);
        grids[p]->setColumnStretch(13, 1);
        m_tabs->addTab(page, QString());
    }
    // Settings take digits and a point only (0 stands for the code's value where there is
    // one); the deflection divisor and the counts and diameters are whole numbers.
    static const QRegularExpression decimals(QStringLiteral("[0-9]*\\.?[0-9]*"));
    static const QRegularExpression whole(QStringLiteral("[0-9]*"));
    BeamSettings shape;
    forEachSettingsField(shape, [&](std::string_view nameView, auto& value) {
        using T = std::decay_t<decltype(value)>;
        const std::string name(nameView);
        const std::size_t at = fieldIndex(name);
        ORVAK_ASSERT(at < kFieldTexts.size());
        QGridLayout* grid = grids[kFieldTexts[at].page];
        const int row = grid->rowCount();
        const QString objectName = QString::fromStdString(name);
        if (isFlag(name)) {
            auto* box = new QCheckBox(grid->parentWidget());
            box->setObjectName(objectName);
            grid->addWidget(box, row, 0, 1, 14);
            m_flags[name] = box;
            m_labels[name] = box;
            return;
        }
        auto* caption = new QLabel(grid->parentWidget());
        grid->addWidget(caption, row, 0);
        m_labels[name] = caption;
        std::size_t count = 1;
        if constexpr (!std::is_same_v<T, float> && !std::is_same_v<T, std::int16_t>) {
            count = value.size();
        }
        const bool integral = std::is_same_v<T, std::int16_t> || name == "DeflTxt";
        for (std::size_t i = 0; i < count; ++i) {
            auto* edit = new QLineEdit(grid->parentWidget());
            edit->setObjectName(objectName);
            edit->setProperty("index", static_cast<int>(i));
            edit->setValidator(new QRegularExpressionValidator(integral ? whole : decimals, edit));
            edit->setMaxLength(9);
            ui::fitToChars(edit, 7);
            // Tables of twelve stand in two rows of six.
            const int column = 1 + static_cast<int>(i % 6);
            const int line = row + static_cast<int>(i / 6);
            grid->addWidget(edit, line, column);
            m_fields[name].push_back(edit);
        }
    });
    for (QGridLayout* grid : grids) {
        grid->setRowStretch(grid->rowCount(), 1);
    }

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_save);
    buttons->addWidget(m_defaults);
    buttons->addStretch(1);
    buttons->addWidget(m_exit);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs, 1);
    layout->addLayout(buttons);

    connect(m_save, &QPushButton::clicked, this, [this] { save(); });
    connect(m_defaults, &QPushButton::clicked, this, [this] { restoreDefaults(); });
    connect(m_exit, &QPushButton::clicked, this, [this] { ui::closeForm(this); });

    readPrompts();
    if (m_beamNumber > 0) {
        return; // the beam's copy is read by the constructor of a beam's settings
    }
    try {
        m_stored = readBeamSettingsFile(m_shell.generalFolder());
    } catch (const FileError& e) {
        // A damaged file is named; the form shows the built-in values, saved only on request.
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        m_stored = defaultBeamSettings();
    }
    showSettings(m_stored);
}

Bmseting::Bmseting(shell::ShellState& shell, int floor, int beamNumber, QWidget* parent)
    : Bmseting(shell, parent) {
    m_beamFloor = floor;
    m_beamNumber = beamNumber;
    setObjectName(QStringLiteral("Bmseting%1_%2").arg(floor).arg(beamNumber));
    readPrompts();
    try {
        if (const auto b = readStoredBeam(m_shell.projectPath(), floor, beamNumber)) {
            m_stored = b->settings;
            m_beamName = ui::toQString(b->name, m_shell.language());
        }
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
    }
    readPrompts();
    showSettings(m_stored);
}

QString Bmseting::prompt(std::size_t n, std::string_view english) const {
    return ui::formPrompt(m_prompts, n, english, m_shell.language());
}

QString Bmseting::label(const std::string& name) const {
    const std::size_t at = fieldIndex(name);
    return prompt(kFirstFieldPrompt + at, kFieldTexts[at].english);
}

void Bmseting::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    setWindowTitle(m_beamNumber > 0
                       ? prompt(kBeamCaptionPrompt, "Settings of beam %1").arg(m_beamName)
                       : prompt(kCaptionPrompt, "Beam settings"));
    for (int p = 0; p < m_tabs->count(); ++p) {
        m_tabs->setTabText(p, prompt(kFirstPagePrompt + static_cast<std::size_t>(p),
                                     kPageTitles[static_cast<std::size_t>(p)]));
    }
    for (const auto& [name, widget] : m_labels) {
        if (auto* box = qobject_cast<QCheckBox*>(widget)) {
            box->setText(label(name));
        } else if (auto* caption = qobject_cast<QLabel*>(widget)) {
            caption->setText(label(name));
        }
    }
    m_save->setText(prompt(kSavePrompt, "Save"));
    m_defaults->setText(prompt(kDefaultsPrompt, "Defaults"));
    m_exit->setText(prompt(kExitPrompt, "Exit"));
}

QLineEdit* Bmseting::field(const std::string& name, std::size_t index) const {
    const auto it = m_fields.find(name);
    return it == m_fields.end() || index >= it->second.size() ? nullptr : it->second[index];
}

QCheckBox* Bmseting::flag(const std::string& name) const {
    const auto it = m_flags.find(name);
    return it == m_flags.end() ? nullptr : it->second;
}

void Bmseting::showSettings(const BeamSettings& settings) {
    forEachSettingsField(settings, [&](std::string_view nameView, const auto& value) {
        using T = std::decay_t<decltype(value)>;
        const std::string name(nameView);
        if constexpr (std::is_same_v<T, std::int16_t>) {
            if (QCheckBox* box = flag(name)) {
                box->setChecked(value != 0);
            } else {
                field(name)->setText(QString::number(value));
            }
        } else if constexpr (std::is_same_v<T, float>) {
            field(name)->setText(shown(value));
        } else {
            for (std::size_t i = 0; i < value.size(); ++i) {
                field(name, i)->setText(shown(value[i]));
            }
        }
    });
}

BeamSettings Bmseting::shownSettings() const {
    BeamSettings s;
    forEachSettingsField(s, [&](std::string_view nameView, auto& value) {
        using T = std::decay_t<decltype(value)>;
        const std::string name(nameView);
        if constexpr (std::is_same_v<T, std::int16_t>) {
            if (QCheckBox* box = flag(name)) {
                value = box->isChecked() ? 1 : 0;
            } else {
                // Two digits of a count or a diameter fit; more is refused by the checks.
                const int typed = field(name)->text().toInt();
                value = static_cast<std::int16_t>(std::min(typed, 32767));
            }
        } else if constexpr (std::is_same_v<T, float>) {
            value = field(name)->text().toFloat();
        } else {
            for (std::size_t i = 0; i < value.size(); ++i) {
                value[i] = field(name, i)->text().toFloat();
            }
        }
    });
    return s;
}

bool Bmseting::isChanged() const {
    return !(shownSettings() == m_stored);
}

bool Bmseting::save() {
    const BeamSettings settings = shownSettings();
    if (const std::string problem = validateBeamSettings(settings); !problem.empty()) {
        ui::tellUser(this, m_messageHook,
                     prompt(kRefusedPrompt, "The settings were not saved: %1.")
                         .arg(QString::fromStdString(problem)));
        return false;
    }
    try {
        if (m_beamNumber > 0) {
            // The beam's own copy, stored in place as every edit of the beam.
            std::optional<BeamRecord> b =
                readStoredBeam(m_shell.projectPath(), m_beamFloor, m_beamNumber);
            if (!b) {
                throw InputError("the beam is no longer in its floor's file");
            }
            b->settings = settings;
            storeBeam(m_shell.projectPath(), m_beamFloor, *b);
            markChanged(this, m_messageHook, m_shell.projectPath(), m_beamFloor, m_beamNumber);
        } else {
            writeBeamSettingsFile(m_shell.generalFolder(), settings);
        }
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    } catch (const InputError& e) {
        ui::tellUser(this, m_messageHook,
                     prompt(kRefusedPrompt, "The settings were not saved: %1.")
                         .arg(QString::fromUtf8(e.what())));
        return false;
    }
    m_stored = settings;
    showSettings(m_stored);
    emit saved(m_beamNumber > 0 ? prompt(kBeamSavedPrompt, "The settings of the beam were saved.")
                                : prompt(kSavedPrompt, "The beam settings were saved."));
    return true;
}

void Bmseting::restoreDefaults() {
    showSettings(defaultBeamSettings());
}

void Bmseting::closeEvent(QCloseEvent* event) {
    if (!isChanged() || ui::mayLeaveForm(this, m_shell, m_askHook, [this] { return save(); })) {
        event->accept();
    } else {
        event->ignore();
    }
}

} // namespace orvak::beams::forms
