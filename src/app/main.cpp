// orvak: the GUI program. Finds the program and data folders, runs the start-up sequence and
// shows the main window; --screenshot saves a picture of the window instead of staying open.
#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QImage>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QPixmap>
#include <QScreen>
#include <QThread>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "app/mdi_main.h"
#include "core/error.h"
#include "model/shipped_data.h"
#include "shell/startup.h"

namespace fs = std::filesystem;

namespace {

/// Size of the window in a screenshot, so that pictures of different machines compare.
constexpr int kShotWidth = 1100;
constexpr int kShotHeight = 720;
constexpr int kTwipsPerPixel = 15;

const char* environment(const char* name) {
    return std::getenv(name);
}

std::int16_t twips(int pixels) {
    return static_cast<std::int16_t>(std::clamp(pixels * kTwipsPerPixel, 0, 32767));
}

/// Lets the window system show the window and every pending paint happen.
void waitUntilPainted(QWidget& window) {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 5000 &&
           !(window.windowHandle() && window.windowHandle()->isExposed())) {
        QApplication::processEvents(QEventLoop::AllEvents, 50);
        QThread::msleep(10);
    }
    // Layouts settle over a few rounds of events (sub-windows, status bar, fonts).
    for (int round = 0; round < 20; ++round) {
        QApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(10);
    }
}

} // namespace

int main(int argc, char** argv) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Orvak: design of reinforced-concrete beams, columns and footings to the ACI code.");
    const QCommandLineOption helpOption = parser.addHelpOption();
    const QCommandLineOption versionOption(QStringLiteral("version"),
                                           QStringLiteral("Show the version and end."));
    const QCommandLineOption projectOption(
        QStringLiteral("project"),
        QStringLiteral("Open the project in <folder> instead of the remembered one."),
        QStringLiteral("folder"));
    const QCommandLineOption screenshotOption(
        QStringLiteral("screenshot"),
        QStringLiteral("Show the main window, save a picture of it as <png> and end."),
        QStringLiteral("png"));
    const QCommandLineOption formOption(
        QStringLiteral("form"),
        QStringLiteral(
            "Open a form at start by its name (Projdata, Gsetting, Roundbar ...) or Help."),
        QStringLiteral("name"));
    parser.addOption(versionOption);
    parser.addOption(projectOption);
    parser.addOption(screenshotOption);
    parser.addOption(formOption);

    // The options are read before the window system is touched, so that --help and --version
    // work without a display.
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    if (!parser.parse(arguments)) {
        std::fprintf(stderr, "%s\n", qPrintable(parser.errorText()));
        return 1;
    }
    if (parser.isSet(helpOption)) {
        // Without an application object Qt cannot name the program in the usage line.
        QString help = parser.helpText();
        help.replace(QStringLiteral("<executable_name>"), QStringLiteral("orvak"));
        std::printf("%s", qPrintable(help));
        return 0;
    }
    if (parser.isSet(versionOption)) {
        std::printf("orvak %s\n", ORVAK_VERSION);
        return 0;
    }
    if (!parser.positionalArguments().isEmpty()) {
        std::fprintf(stderr, "Unexpected argument \"%s\"; try --help.\n",
                     qPrintable(parser.positionalArguments().first()));
        return 1;
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Orvak"));
    QApplication::setApplicationVersion(QStringLiteral(ORVAK_VERSION));

    orvak::shell::StartupOptions options;
    options.programFolder = orvak::shell::resolveProgramFolder(environment);
    const fs::path executable(QApplication::applicationFilePath().toStdString());
    const fs::path dataFolder = orvak::shell::resolveDataFolder(executable, environment);
    if (!dataFolder.empty()) {
        options.dataFolder = dataFolder;
    }
    options.installShippedData = orvak::model::installShippedData;
    if (const QScreen* screen = QApplication::primaryScreen()) {
        options.screenWidthTwips = twips(screen->size().width());
        options.screenHeightTwips = twips(screen->size().height());
    }
    if (parser.isSet(projectOption)) {
        options.project = fs::path(parser.value(projectOption).toStdString());
    }

    orvak::shell::ShellState shell;
    try {
        shell = orvak::shell::runStartup(options);
    } catch (const orvak::FileError& e) {
        std::fprintf(stderr, "%s\n", e.what());
        QMessageBox::critical(nullptr, QStringLiteral("Orvak Ver 2"), QString::fromUtf8(e.what()));
        return 1;
    }

    orvak::app::MdiMain window(shell);
    const bool screenshot = parser.isSet(screenshotOption);
    if (screenshot) {
        window.setRemembersGeometry(false);
        window.resize(kShotWidth, kShotHeight);
        // Messages go to the terminal: a picture is taken without anyone to click OK.
        window.setMessageHook(
            [](const QString& message) { std::fprintf(stderr, "%s\n", qPrintable(message)); });
    }
    window.show();

    // A form asked for on the command line opens once the window has its final size.
    const auto openForm = [&window, &parser, &formOption] {
        if (!parser.isSet(formOption)) {
            return;
        }
        const QString form = parser.value(formOption);
        if (form.compare(QStringLiteral("Help"), Qt::CaseInsensitive) == 0) {
            window.openHelp(0);
        } else if (window.openForm(form) == nullptr &&
                   !window.formNames().contains(form, Qt::CaseInsensitive)) {
            std::fprintf(stderr, "There is no form named \"%s\"; the forms are %s and Help.\n",
                         qPrintable(form),
                         qPrintable(window.formNames().join(QStringLiteral(", "))));
        }
    };

    if (screenshot) {
        window.showStartupWarnings();
        waitUntilPainted(window);
        openForm();
        waitUntilPainted(window);
        const QString png = parser.value(screenshotOption);
        const QPixmap picture = window.grab();
        if (picture.isNull() || !picture.save(png, "PNG")) {
            std::fprintf(stderr, "The screenshot could not be saved as %s.\n", qPrintable(png));
            return 1;
        }
        // The picture is taken; leave without writing PRJNO, as if the program had not run.
        return 0;
    }

    // Problems met at start-up are told once the window stands.
    QTimer::singleShot(0, &window, [&window, &openForm] {
        openForm();
        window.showStartupWarnings();
    });
    return QApplication::exec();
}
