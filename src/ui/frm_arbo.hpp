#pragma once
// The main screen: the hub of view buttons with the File, View and Help menus. It is the first
// screen and the last; closing it by any road goes through EndProgram.

#include <QMainWindow>
#include <QPointer>
#include <array>
#include <functional>
#include <memory>

#include "base/document_launcher.hpp"
#include "base/host.hpp"
#include "harvest/calc_session.hpp"
#include "model/model.hpp"

class QAction;
class QLabel;
class QPushButton;

namespace arborex {

class frmCalc;
class frmPolygon;
class frmProject;
class frmSettingsReg;
class frmSummary;

class frmArbo final : public QMainWindow {
    Q_OBJECT
public:
    frmArbo(Model& m, Host& host, QWidget* parent = nullptr);
    ~frmArbo() override;

    // Opens view n (0 project information), or brings it up when already open.
    void view(int n);
    // Brings the main screen back when a view closes.
    void showMenu();
    // Caption "Arborex for Windows - " + the project's name.
    void UpdateCaption();
    // Enables the view buttons that the project's state allows: some need a polygon.
    void refreshButtons();
    // Rewrites the four recent entries from LastFiles.
    void refreshRecentMenu();
    // The common exit: asks, and on OK deletes the exchange files and ends the program.
    // `cancel` is set when the user stays.
    void EndProgram(bool& cancel);
    // Shows the about box as a timed splash.
    void showSplash();
    // The polygon screen while it is open, else nullptr.
    frmPolygon* polygonScreen() const;

    // What ends the process once the user confirmed; tests replace it.
    void setEndAction(std::function<void()> endProcess) { endProcess_ = std::move(endProcess); }
    // What opens a written report; tests replace the desktop's.
    void setDocumentLauncher(std::unique_ptr<DocumentLauncher> launcher) {
        launcher_ = std::move(launcher);
    }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildViewButtons();
    void buildMenus();
    QAction* addAction(QMenu* menu, const char* name, const QString& caption,
                       void (frmArbo::*handler)());
    // Runs a menu or button action at the operation boundary, so a failure shows the error
    // screen instead of ending the program.
    void guarded(const char* routine, const std::function<void()>& step);
    // With polygons in memory, asks before they are replaced. True to go on.
    bool cautionBeforeReplacing(const std::string& text);
    void openProject(const std::string& path, int recentIndex);
    void saveAsOlderVersion(int16_t version, const std::string& suffix);
    void openAddress(const QString& address);
    // A new or opened project replaced the polygons: an open polygon screen lists them again.
    void redisplayPolygonScreen();

    void cmdExit_Click();
    void cmdAbout_Click();
    void mniNew_Click();
    void mniOpen_Click();
    void mniSave_Click();
    void mniSaveAs_Click();
    void mniSaveV200_Click();
    void mniSaveV111_Click();
    void mnuPurge_Click();
    void mnLast_Click(int index);
    void mnuHelpArbo_Click();
    void mniEmail_Click();

    Model& m_;
    Host& host_;
    std::array<QPushButton*, 6> cmdView_{};
    std::array<QAction*, 4> mnLast_{};
    QPointer<frmProject> project_;
    QPointer<frmSettingsReg> settings_;
    QPointer<frmCalc> calc_;
    QPointer<frmSummary> summary_;
    QPointer<frmPolygon> polygon_;
    // The calculation's state outlives its screen: reopening expands the curves into the memory
    // the last opening left, which is most of the cost of opening a large project.
    CalcRun calcRun_;
    std::function<void()> endProcess_;
    std::unique_ptr<DocumentLauncher> launcher_;
    bool ending_ = false;
};

}  // namespace arborex
