// The desktop program's entry: builds the platform services and the main screen, then hands
// over to the start-up sequence.

#include <QApplication>
#include <QIcon>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "frame/startup.hpp"
#include "platform/app_paths.hpp"
#include "platform/qt_environment.hpp"
#include "platform/qt_settings_store.hpp"
#include "platform/single_instance.hpp"
#include "screen_grab.hpp"
#include "ui/frm_arbo.hpp"
#include "ui/frm_status.hpp"
#include "ui/qt_prompt.hpp"
#include "ui/qt_views.hpp"
#include "ui/startup_sequence.hpp"

int main(int argc, char* argv[]) {
    // Screenshots are taken without a display.
    const bool grab = argc > 1 && std::string(argv[1]) == "--grab";
    if (grab) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setOrganizationName("Arborex");
    QApplication::setApplicationName("Arborex");
    QApplication::setApplicationVersion("3.2.26");
    // The installed desktop entry and icon, so that a window manager groups the windows under
    // the menu entry that started them.
    QGuiApplication::setDesktopFileName("arborex");
    QApplication::setWindowIcon(QIcon::fromTheme("arborex"));

    if (grab) {
        const QStringList words = QApplication::arguments();
        if (words.size() < 3 || words.size() > 4) {
            std::cerr << "usage: arborex --grab DIR [PROJECT]\n";
            return 2;
        }
        return arborex::grabScreens(words[2].toStdString(),
                                    words.size() == 4 ? words[3].toStdString() : std::string(),
                                    arborex::programDataFolder(QApplication::applicationDirPath()));
    }

    arborex::QtSettingsStore settings;
    arborex::QtPrompt prompt;
    arborex::frmStatus status;
    arborex::QtViews views;
    arborex::QtEnvironment system;
    arborex::Host host{prompt, status, settings, views, system};
    auto model = std::make_unique<arborex::Model>();

    arborex::frmArbo mainScreen(*model, host);
    views.setMainScreen(&mainScreen);
    prompt.setParent(&mainScreen);

    arborex::SingleInstance instance;
    std::vector<std::string> args;
    for (const QString& arg : QApplication::arguments().mid(1)) args.push_back(arg.toStdString());

    arborex::StartupEnvironment env;
    env.commandLine = arborex::joinArguments(args);
    env.programFolder = arborex::programDataFolder(QApplication::applicationDirPath());
    env.anotherCopyRunning = [&instance] { return instance.anotherRunning(); };

    if (!arborex::runStartup(*model, host, mainScreen, env)) return 0;
    return QApplication::exec();
}
