#include "ui/frm_arbo.hpp"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include "base/file_names.hpp"
#include "base/text.hpp"
#include "frame/error_handler.hpp"
#include "frame/project_open.hpp"
#include "frame/startup.hpp"
#include "frame/user_settings.hpp"
#include "model/colours.hpp"
#include "model/default_polygon.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/project_file.hpp"
#include "model/recent_files.hpp"
#include "platform/qt_document_launcher.hpp"
#include "report/document_report_view.hpp"
#include "ui/frm_about.hpp"
#include "ui/frm_calc.hpp"
#include "ui/frm_polygon.hpp"
#include "ui/frm_project.hpp"
#include "ui/frm_settings_reg.hpp"
#include "ui/frm_spreadsheet.hpp"
#include "ui/frm_summary.hpp"
#include "ui/startup_sequence.hpp"
#include "ui/ui_helpers.hpp"
#include "yield/work_files.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmArbo2";

struct ViewButton {
    const char* caption;
    const char* description;
    int view;  // the view the button opens
};

constexpr std::array<ViewButton, 6> kViewButtons = {{
    {"&Project", "Scenario, licence, district, company and user of the project", 0},
    {"Polygon &Data", "Enter and edit the polygons and their inventory", 1},
    {"C&alculations", "Simulate the harvest and find the highest sustainable rate", 3},
    {"&Summary", "Compare the yields and harvest ages of all polygons", 2},
    {"&Report", "Write the project report to a document", 4},
    {"S&ettings", "Program folders, growth models and user defaults", 7},
}};

struct ViewMenuEntry {
    const char* caption;
    int view;
};

// Every view, the data grid included, which has no button of its own.
constexpr std::array<ViewMenuEntry, 7> kViewMenu = {{
    {"&Project", 0},
    {"Polygon &Data", 1},
    {"Data &Grid", 5},
    {"C&alculations", 3},
    {"&Summary", 2},
    {"&Report", 4},
    {"S&ettings", 7},
}};

// The summary, the calculation and the report have nothing to show or compute without a
// polygon; the other views are where polygons come from.
bool needsPolygons(int view) {
    return view == 2 || view == 3 || view == 4;
}

}  // namespace

frmArbo::frmArbo(Model& m, Host& host, QWidget* parent)
    : QMainWindow(parent),
      m_(m),
      host_(host),
      endProcess_([] { QCoreApplication::exit(0); }),
      launcher_(std::make_unique<QtDocumentLauncher>()) {
    setObjectName("frmArbo");
    buildViewButtons();
    buildMenus();
    refreshButtons();
    refreshRecentMenu();
    UpdateCaption();
}

frmArbo::~frmArbo() = default;

void frmArbo::buildViewButtons() {
    auto* central = new QWidget(this);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(8);
    for (std::size_t i = 0; i < kViewButtons.size(); ++i) {
        const ViewButton& entry = kViewButtons[i];
        auto* button = new QPushButton(entry.caption, central);
        button->setObjectName(QString("cmdView_%1").arg(i));
        button->setMinimumWidth(140);
        auto* label = new QLabel(entry.description, central);
        label->setObjectName(QString("lbl_%1").arg(i));
        label->setBuddy(button);
        grid->addWidget(button, static_cast<int>(i), 0);
        grid->addWidget(label, static_cast<int>(i), 1);
        const int viewNumber = entry.view;
        connect(button, &QPushButton::clicked, this, [this, viewNumber] { view(viewNumber); });
        cmdView_[i] = button;
    }
    grid->setColumnStretch(1, 1);

    auto* about = new QPushButton("A&bout", central);
    about->setObjectName("cmdAbout");
    auto* exit = new QPushButton("E&xit Program", central);
    exit->setObjectName("cmdExit");
    connect(about, &QPushButton::clicked, this, &frmArbo::cmdAbout_Click);
    connect(exit, &QPushButton::clicked, this, &frmArbo::cmdExit_Click);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(about);
    bottom->addStretch();
    bottom->addWidget(exit);

    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(20, 16, 20, 16);
    layout->addLayout(grid);
    layout->addSpacing(12);
    layout->addLayout(bottom);
    setCentralWidget(central);
}

QAction* frmArbo::addAction(QMenu* menu, const char* name, const QString& caption,
                            void (frmArbo::*handler)()) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    if (handler) connect(action, &QAction::triggered, this, handler);
    return action;
}

void frmArbo::buildMenus() {
    QMenu* file = menuBar()->addMenu("&File");
    file->setObjectName("mnuFile");
    addAction(file, "mniNew", "&New", &frmArbo::mniNew_Click);
    addAction(file, "mniOpen", "&Open...", &frmArbo::mniOpen_Click);
    addAction(file, "mniSave", "&Save", &frmArbo::mniSave_Click);
    addAction(file, "mniSaveAs", "Save &As...", &frmArbo::mniSaveAs_Click);
    addAction(file, "mniSaveV200", "Save &As Version 2.0+", &frmArbo::mniSaveV200_Click);
    addAction(file, "mniSaveV111", "Save &As Version 1.1+", &frmArbo::mniSaveV111_Click);
    file->addSeparator();
    addAction(file, "mnuPurge", "&Purge Deleted Polygons", &frmArbo::mnuPurge_Click);
    file->addSeparator();
    for (int i = 0; i < 4; ++i) {
        QAction* entry = file->addAction(QString());
        entry->setObjectName(QString("mnLast_%1").arg(i));
        connect(entry, &QAction::triggered, this, [this, i] { mnLast_Click(i); });
        mnLast_[static_cast<std::size_t>(i)] = entry;
    }
    file->addSeparator();
    addAction(file, "mniExit", "E&xit", &frmArbo::cmdExit_Click);

    QMenu* views = menuBar()->addMenu("&View");
    views->setObjectName("mniView");
    for (const ViewMenuEntry& entry : kViewMenu) {
        QAction* action = views->addAction(entry.caption);
        action->setObjectName(QString("mniView_%1").arg(entry.view));
        action->setData(entry.view);
        const int viewNumber = entry.view;
        connect(action, &QAction::triggered, this, [this, viewNumber] { view(viewNumber); });
    }

    QMenu* help = menuBar()->addMenu("&Help");
    help->setObjectName("mnuHelp");
    addAction(help, "mnuHelpArbo", "Arborex &Manual", &frmArbo::mnuHelpArbo_Click);
    QMenu* web = help->addMenu("&Web Pages");
    web->setObjectName("mnuWeb");
    QAction* home = web->addAction("&Arborex Web Page");
    home->setObjectName("mnuWeb_0");
    connect(home, &QAction::triggered, this, [this] {
        openAddress(
            qs(host_.settings.read(SettingsRoot::Machine, "Support", "WEBPAGE").value_or("")));
    });
    QAction* support = web->addAction("&Support Web Page");
    support->setObjectName("mnuWeb_1");
    connect(support, &QAction::triggered, this, [this] { openAddress(qs(m_.Files[FileWebPage])); });
    addAction(help, "mniEmail", "&E-mail Support", &frmArbo::mniEmail_Click);
    help->addSeparator();
    addAction(help, "mniAbout", "&About", &frmArbo::cmdAbout_Click);
}

void frmArbo::guarded(const char* routine, const std::function<void()>& step) {
    runGuarded(m_, host_, routine, kModule, step);
}

// ---- Views ----------------------------------------------------------------------------------

void frmArbo::view(int n) {
    QDialog* screen = nullptr;
    if (n == 0) {
        if (!project_) project_ = new frmProject(m_, host_, this);
        screen = project_;
    } else if (n == 1) {
        if (!polygon_) {
            polygon_ = new frmPolygon(m_, host_, this);
            connect(polygon_, &frmPolygon::polygonsChanged, this, &frmArbo::refreshButtons);
        }
        screen = polygon_;
    } else if (n == 2) {
        if (!summary_) {
            summary_ = new frmSummary(m_, host_, this);
            connect(summary_, &frmSummary::saveRequested, this, &frmArbo::mniSave_Click);
            connect(summary_, &frmSummary::saveAsRequested, this, &frmArbo::mniSaveAs_Click);
        } else {
            summary_->refresh();
        }
        screen = summary_;
    } else if (n == 3) {
        if (!calc_) calc_ = new frmCalc(m_, host_, calcRun_, this);
        screen = calc_;
    } else if (n == 4) {
        // The report is written at once: no screen of its own.
        guarded("view",
                [this] { writeReportView(m_, host_.prompt, *launcher_, calcRun_.HanzlikRate); });
        return;
    } else if (n == 5) {
        auto* grid = findChild<frmSpreadsheet*>(QString(), Qt::FindDirectChildrenOnly);
        // Polygons the grid imports start from the default polygon, which the polygon screen
        // reads when it opens; without that screen the grid has it read here.
        if (!polygon_) guarded("view", [this] { LoadDefaults(m_, host_); });
        if (!grid) {
            grid = new frmSpreadsheet(m_, host_, this);
            connect(grid, &frmSpreadsheet::polygonsChanged, this, &frmArbo::refreshButtons);
            // "Return to Polygon Data" means what it says: the polygon screen comes up after
            // the main screen that every closing view brings back.
            connect(
                grid, &QDialog::finished, this,
                [this] {
                    if (!ending_) view(1);
                },
                Qt::QueuedConnection);
        } else {
            grid->refresh();
        }
        screen = grid;
    } else if (n == 7) {
        if (!settings_) settings_ = new frmSettingsReg(m_, host_, this);
        screen = settings_;
    } else {
        return;  // no view has this number
    }
    if (!screen->testAttribute(Qt::WA_DeleteOnClose)) {
        screen->setAttribute(Qt::WA_DeleteOnClose);
        connect(screen, &QDialog::finished, this, &frmArbo::showMenu);
    }
    screen->show();
    screen->raise();
    screen->activateWindow();
}

frmPolygon* frmArbo::polygonScreen() const {
    return polygon_;
}

void frmArbo::redisplayPolygonScreen() {
    // The load's own request to the views comes before the species are bound and the harvest
    // ages computed; the list is shown again once the project is complete.
    if (polygon_ && polygon_->isVisible()) polygon_->redisplayPolygons(m_.LastPoly);
    if (auto* grid = findChild<frmSpreadsheet*>(QString(), Qt::FindDirectChildrenOnly))
        grid->refresh();
    // The summary has nothing to show, and no area to average over, without polygons.
    if (summary_ && m_.LastPoly >= 0)
        summary_->refresh();
    else if (summary_)
        summary_->close();
}

void frmArbo::showMenu() {
    show();
    raise();
    activateWindow();
}

void frmArbo::UpdateCaption() {
    arborex::UpdateCaption(*this, m_, kProgramTitle);
    if (polygon_) polygon_->UpdateCaption();
    if (summary_) summary_->UpdateCaption();
}

void frmArbo::refreshButtons() {
    const bool havePolygons = m_.LastPoly >= 0;
    const auto allowed = [havePolygons](int view) { return havePolygons || !needsPolygons(view); };
    for (std::size_t i = 0; i < kViewButtons.size(); ++i)
        cmdView_[i]->setEnabled(allowed(kViewButtons[i].view));
    if (auto* views = menuBar()->findChild<QMenu*>("mniView"))
        for (QAction* action : views->actions())
            action->setEnabled(allowed(action->data().toInt()));
}

void frmArbo::refreshRecentMenu() {
    for (int i = 0; i < 4; ++i) {
        QAction* entry = mnLast_[static_cast<std::size_t>(i)];
        const std::string& path = m_.LastFiles[static_cast<std::size_t>(i)];
        entry->setText(qs(recentCaption(m_, i)));
        entry->setVisible(!path.empty());
        entry->setEnabled(fileExists(path));
    }
}

void frmArbo::showSplash() {
    frmAbout::showSplash(this, 3000);
}

void frmArbo::cmdAbout_Click() {
    frmAbout::showAbout(this);
}

// ---- Exit -----------------------------------------------------------------------------------

void frmArbo::EndProgram(bool& cancel) {
    const std::string title = kProgramTitle;
    const Answer answer = host_.prompt.ask("Exit from " + title, "Do you want to leave " + title,
                                           Buttons::OkCancel, Answer::Ok, Icon::Question);
    cancel = answer != Answer::Ok;
    if (cancel) return;
    deleteWorkFiles(m_);
    ending_ = true;
    endProcess_();
}

void frmArbo::cmdExit_Click() {
    bool cancel = false;
    EndProgram(cancel);
}

void frmArbo::closeEvent(QCloseEvent* event) {
    if (ending_) {
        event->accept();
        return;
    }
    bool cancel = false;
    EndProgram(cancel);
    if (cancel)
        event->ignore();
    else
        event->accept();
}

// ---- File menu ------------------------------------------------------------------------------

bool frmArbo::cautionBeforeReplacing(const std::string& text) {
    if (m_.LastPoly < 0) return true;
    return host_.prompt.ask(std::string(kProgramTitle) + " - Caution", text, Buttons::OkCancel,
                            Answer::Ok, Icon::Exclamation) == Answer::Ok;
}

void frmArbo::mniNew_Click() {
    if (!cautionBeforeReplacing(
            "Caution - Creating a new project will erase all current data from memory."))
        return;
    guarded("mniNew_Click", [this] {
        ResetVars(m_);
        SetDefaults(m_);
        setColours(m_);
        LoadRegistry(m_, host_);
        NewFileName(m_);
        EmptyArrays(m_);
        refreshButtons();
        refreshRecentMenu();
        UpdateCaption();
        redisplayPolygonScreen();
    });
}

// Loads `path`; recentIndex is the recent entry it came from, or -1 for the open dialog.
void frmArbo::openProject(const std::string& path, int recentIndex) {
    guarded(recentIndex < 0 ? "mniOpen_Click" : "mnLast_Click", [&] {
        const bool loaded = LoadARX(m_, host_, path);
        refreshButtons();
        redisplayPolygonScreen();
        if (!loaded) return;
        if (recentIndex < 0) {
            AddLast(m_, host_, path);
        } else {
            OrderLast(m_, host_, recentIndex);
            SaveRegLast(m_, host_.settings);
        }
        UpdateCaption();
    });
}

void frmArbo::mniOpen_Click() {
    if (!cautionBeforeReplacing(
            "Caution - Opening a ARX file will replace polygons currently in memory"))
        return;
    FileRequest request;
    request.title = "ARX";
    request.filter = "ARBOREX (*.arx)|*.arx";
    request.folder = m_.Paths[UserDocuments];
    const auto choice = host_.prompt.openFile(request);
    if (!choice || choice->path.empty()) return;
    openProject(choice->path, -1);
}

void frmArbo::mnLast_Click(int index) {
    const std::string path = m_.LastFiles[static_cast<std::size_t>(index)];
    if (path.empty()) return;
    if (!cautionBeforeReplacing(
            "Caution - Opening a ARX file will replace polygons currently in memory"))
        return;
    openProject(path, index);
}

void frmArbo::mniSave_Click() {
    guarded("mniSave_Click", [this] { SaveFile(m_, host_, true); });
}

void frmArbo::mniSaveAs_Click() {
    guarded("mniSaveAs_Click", [this] { SaveAsFile(m_, host_, true); });
}

void frmArbo::saveAsOlderVersion(int16_t version, const std::string& suffix) {
    const Answer answer = host_.prompt.ask(
        "SOME DATA MAYBE LOST",
        "Caution Saving the file in a previous file format will ONLY Save the information "
        "relevent to that version.",
        Buttons::OkCancel, Answer::Ok, Icon::Exclamation);
    if (answer != Answer::Ok) return;
    FileRequest request;
    request.title = "Save As";
    request.filter = kArxFilter;
    request.folder = m_.Paths[UserDocuments];
    request.proposedName = m_.Files[FileDisplayName] + suffix;
    request.overwritePrompt = true;
    const auto choice = host_.prompt.saveFile(request);
    if (!choice || trim(choice->path).empty()) return;
    guarded(version == 200 ? "mniSaveV200_Click" : "mniSaveV111_Click",
            [&] { SaveArx(m_, host_, choice->path, version, true); });
}

void frmArbo::mniSaveV200_Click() {
    saveAsOlderVersion(200, " (Version 2.00)");
}

void frmArbo::mniSaveV111_Click() {
    saveAsOlderVersion(111, " (Version 1.11)");
}

void frmArbo::mnuPurge_Click() {
    guarded("mnuPurge_Click", [this] {
        PurgeDeletedPolygons(m_, host_);
        refreshButtons();
    });
}

// ---- Help menu ------------------------------------------------------------------------------

void frmArbo::openAddress(const QString& address) {
    if (address.trimmed().isEmpty()) return;
    QDesktopServices::openUrl(QUrl::fromUserInput(address.trimmed()));
}

void frmArbo::mnuHelpArbo_Click() {
    // A manual the settings name and that is there comes first. Otherwise the user's guide
    // installed with the program, PREFIX/share/doc/arborex/guide/ for PREFIX/bin/ (the build
    // tree's layout too): its HTML pages when the build rendered them, else its Markdown ones.
    if (!m_.Files[FileManual].empty() && fileExists(m_.Files[FileManual])) {
        launcher_->openDocument(m_.Files[FileManual]);
        return;
    }
    QString prefix = QCoreApplication::applicationDirPath();
    prefix.truncate(prefix.lastIndexOf('/'));
    const std::string guide = (prefix + "/share/doc/arborex/guide/").toStdString();
    for (const char* index : {"index.html", "index.md"}) {
        if (fileExists(guide + index)) {
            launcher_->openDocument(guide + index);
            return;
        }
    }
    // Neither is there: the desktop says what it makes of the manual the settings name.
    if (!m_.Files[FileManual].empty()) launcher_->openDocument(m_.Files[FileManual]);
}

void frmArbo::mniEmail_Click() {
    const std::string address =
        host_.settings.read(SettingsRoot::Machine, "Support", "EMAIL").value_or("");
    if (address.empty()) return;
    QDesktopServices::openUrl(QUrl("mailto:" + qs(address)));
}

}  // namespace arborex
