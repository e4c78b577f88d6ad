#include "screen_grab.hpp"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPixmap>
#include <QProcess>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QWidget>
#include <iostream>
#include <memory>

#include "base/dates.hpp"
#include "base/unattended_host.hpp"
#include "frame/project_open.hpp"
#include "frame/startup.hpp"
#include "model/model.hpp"
#include "model/project_file.hpp"
#include "platform/gdal/gdal_table_reader.hpp"
#include "platform/qt_process_runner.hpp"
#include "report/graph_files.hpp"
#include "ui/frm_add.hpp"
#include "ui/frm_age_dist.hpp"
#include "ui/frm_arbo.hpp"
#include "ui/frm_calc.hpp"
#include "ui/frm_calc_report.hpp"
#include "ui/frm_calc_yield.hpp"
#include "ui/frm_comm_thin.hpp"
#include "ui/frm_database.hpp"
#include "ui/frm_fert.hpp"
#include "ui/frm_graph.hpp"
#include "ui/frm_harv_age.hpp"
#include "ui/frm_harv_param.hpp"
#include "ui/frm_polygon.hpp"
#include "ui/frm_project.hpp"
#include "ui/frm_settings_reg.hpp"
#include "ui/frm_silvi.hpp"
#include "ui/frm_spreadsheet.hpp"
#include "ui/frm_summary.hpp"
#include "ui/frm_yield.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

// Shows a screen and saves what it shows.
bool save(QWidget& screen, const QDir& folder, const QString& name) {
    screen.show();
    QApplication::processEvents();
    const QString path = folder.filePath(name + ".png");
    const bool saved = screen.grab().save(path);
    std::cerr << (saved ? "wrote " : "cannot write ") << ss(path) << '\n';
    return saved;
}

// Shows on the polygon screen the first live polygon whose existing management is `manage`
// (0 a natural stand, 1 a managed one). False when the project has none.
bool showPolygonManagedBy(frmPolygon& screen, const Model& m, int manage) {
    auto* list = screen.findChild<QListWidget*>("lstMapPoly");
    for (int row = 0; list && row < list->count(); ++row) {
        const auto p = static_cast<std::size_t>(list->item(row)->data(Qt::UserRole).toInt());
        if (m.Poly[p].MGNT[0] != manage) continue;
        list->setCurrentRow(row);
        return true;
    }
    std::cerr << "arborex --grab: no polygon of management " << manage << '\n';
    return false;
}

// The polygon screen on a natural and on a managed stand, with the help of a field showing.
bool savePolygonScreens(frmPolygon& screen, const Model& m, const QDir& folder) {
    screen.resize(1280, 800);
    screen.show();
    if (auto* area = screen.findChild<QLineEdit*>("txtPData_0")) {
        screen.activateWindow();
        area->setFocus();
    }
    bool ok = showPolygonManagedBy(screen, m, 0) && save(screen, folder, "frmPolygon");
    ok = showPolygonManagedBy(screen, m, 1) && save(screen, folder, "frmPolygon-managed") && ok;
    return ok;
}

// The yield table view of a natural stand, then the treatment screens on a managed one.
bool saveStandScreens(frmPolygon& screen, Model& m, Host& host, const QDir& folder) {
    bool ok = showPolygonManagedBy(screen, m, 0);
    screen.cmdYield_Click(0);
    auto* yield = screen.findChild<frmYield*>();
    if (yield) {
        yield->resize(1240, 720);
        ok = save(*yield, folder, "frmYield") && ok;
        yield->hide();
    }
    ok = yield && showPolygonManagedBy(screen, m, 1) && ok;
    frmCommThin thin(m, host, &screen);
    ok = save(thin, folder, "frmCommThin") && ok;
    thin.hide();
    frmFert fert(m, host, &screen);
    ok = save(fert, folder, "frmFert") && ok;
    fert.hide();
    return ok;
}

// The summary of every polygon, and the two updates of a selection of its first two rows.
bool saveSummaryScreens(Model& m, Host& host, QWidget& main, const QDir& folder) {
    frmSummary summary(m, host, &main);
    summary.resize(1280, 600);
    bool ok = save(summary, folder, "frmSummary");
    summary.hide();
    const std::vector<int16_t> selection = {0, 1};
    frmHarvAge ages(m, host, selection, &main);
    ok = save(ages, folder, "frmHarvAge") && ok;
    ages.hide();
    frmSilvi silviculture(m, host, selection, &main);
    ok = save(silviculture, folder, "frmSilvi") && ok;
    silviculture.hide();
    return ok;
}

// The data grid of the project, and the database importer on a small inventory table whose
// field names are the provincial inventory's, some matched by their alternate keys.
bool saveExchangeScreens(Model& m, Host& host, QWidget& main, const QDir& folder) {
    frmSpreadsheet grid(m, host, &main);
    grid.resize(1280, 600);
    bool ok = save(grid, folder, "frmSpreadsheet");
    grid.hide();
    QTemporaryDir work;
    if (!work.isValid()) return false;
    const QString table = work.filePath("inventory.csv");
    QFile file(table);
    ok = file.open(QIODevice::WriteOnly) && ok;
    file.write(
        "MAP_ID,POLYGON_NUMBER,POLYGON_AREA,SITE_INDEX,CROWN_CLOSURE,SPECIES_CD_1,"
        "SPECIES_PCT_1,EST_AGE_SPP1,EST_HEIGHT_SPP1\n"
        "093G072,37705584,12.5,18.0,70,PLI,60,25,9.0\n");
    file.close();
    const auto reader = makeTableReader();
    frmDatabase importer(m, host, *reader, ss(table), &main);
    if (!importer.opened()) return false;
    importer.resize(900, 560);
    ok = save(importer, folder, "frmDatabase") && ok;
    importer.hide();
    return ok;
}

// The time volume graph of the calculation on `calc`, and the age distribution screen.
bool saveGraphScreens(frmCalc& calc, Model& m, Host& host, const QDir& folder) {
    auto* timeVolume = calc.findChild<QAction*>("mniTimeVol_0");
    if (!timeVolume) return false;
    timeVolume->trigger();
    auto* graph = calc.findChild<frmGraph*>();
    bool ok = graph && save(*graph, folder, "frmGraph");
    if (graph) graph->hide();
    frmAgeDist ages(m, host, nullptr, &calc);
    ok = save(ages, folder, "frmAgeDist") && ok;
    ages.hide();
    return ok;
}

// Each graph kind of the calculation on `run`, as the graph viewer installed beside this program
// draws its control file: the seven result graphs, the time volume graph and the age
// distribution.
bool saveChartPictures(Model& m, const CalcRun& run, const QDir& folder) {
    QTemporaryDir work;
    if (!work.isValid()) return false;
    const std::string before = m.Paths[UserTemp];
    m.Paths[UserTemp] = ss(work.path()) + "/";
    const double now = dateNow();
    const QString viewer = QApplication::applicationDirPath() + "/arborex-chart";
    // The result graphs share one control file: each is drawn before the next is written.
    const auto draw = [&](const std::string& control, const QString& name) {
        const QString path = folder.filePath(name + ".png");
        const bool drawn =
            !control.empty() && QProcess::execute(viewer, {qs(control), "--png", path}) == 0;
        std::cerr << (drawn ? "wrote " : "cannot write ") << ss(path) << '\n';
        return drawn;
    };
    bool ok = true;
    for (int index = 0; index < kResultGraphCount; ++index)
        ok = draw(writeResultGraph(m, run, index, now), QString("chart-graph-%1").arg(index)) && ok;
    ok = draw(GraphTimeVolume2(m, now), "chart-time-volume") && ok;
    ok = draw(writeAgeGraph(m, defaultAgeGraphRequest(run.StartYear), now),
              "chart-age-distribution") &&
         ok;
    m.Paths[UserTemp] = before;
    return ok;
}

// "Calculate Yield Tables" with the checks' lists, then after recalculating every curve with the
// installed model programs, in a work folder of its own. The curves change: this comes last.
bool saveCalcYieldScreens(Model& m, Host& host, const std::string& dataFolder, const QDir& folder) {
    QTemporaryDir work;
    if (!work.isValid()) return false;
    m.Paths[UserTemp] = ss(work.path()) + "/";
    m.Files[FileVDYPexe] = dataFolder + "VDYP/vdypbat";
    m.Files[FileTIPSYexe] = dataFolder + "TIPSY/btipsy";
    m.Files[FileBTP] = dataFolder + "TIPSY/arborex2.btp";

    frmPolygon polygons(m, host);
    QtProcessRunner models;
    frmCalcYield screen(m, host, models, &polygons);
    bool ok = save(screen, folder, "frmCalcYield");
    if (auto* all = screen.findChild<QCheckBox*>("chkRecalcAll")) all->setChecked(true);
    screen.cmdOk_Click();
    // Without messages the screen has closed itself on the Calculation tab.
    ok = save(screen, folder, "frmCalcYield-after") && ok;
    screen.hide();
    return ok;
}

}  // namespace

int grabScreens(const std::string& folder, const std::string& project,
                const std::string& dataFolder) {
    QDir target(qs(folder));
    if (!target.mkpath(".")) {
        std::cerr << "arborex --grab: cannot make " << folder << '\n';
        return 1;
    }
    UnattendedHost unattended("arborex --grab", std::cerr);
    Host& host = unattended.host;
    auto m = std::make_unique<Model>();
    programDefaults(*m);
    m->Paths[ArborexFolder] = dataFolder;
    LoadReferenceData(*m, host);
    const std::string path = project.empty() ? dataFolder + "sample/sample.arx" : project;
    if (!LoadARX(*m, host, path)) {
        std::cerr << "arborex --grab: cannot load " << path << '\n';
        return 1;
    }

    bool ok = true;
    frmArbo main(*m, host);
    ok = save(main, target, "frmArbo") && ok;
    frmProject projectScreen(*m, host, &main);
    ok = save(projectScreen, target, "frmProject") && ok;
    frmSettingsReg settingsScreen(*m, host, &main);
    ok = save(settingsScreen, target, "frmSettingsReg") && ok;
    frmHarvParam harvest(*m, host, &main);
    ok = save(harvest, target, "frmHarvParam") && ok;
    {
        // The default polygon is read from the installation; nothing is copied for a user.
        if (m->Paths[UserDocuments].empty()) m->Paths[UserDocuments] = dataFolder;
        frmPolygon polygons(*m, host, &main);
        ok = savePolygonScreens(polygons, *m, target) && ok;
        frmAdd add(*m, host, &polygons);
        ok = save(add, target, "frmAdd") && ok;
        add.hide();
        ok = saveStandScreens(polygons, *m, host, target) && ok;
        polygons.hide();
    }
    ok = saveSummaryScreens(*m, host, main, target) && ok;
    ok = saveExchangeScreens(*m, host, main, target) && ok;

    CalcRun run;
    frmCalc calc(*m, host, run, &main);
    calc.resize(1280, 800);
    ok = save(calc, target, "frmCalc") && ok;
    auto* search = calc.findChild<QCheckBox*>("chkCalcRate");
    if (search && !search->isChecked()) search->click();
    calc.cmdCalculate_Click();
    ok = save(calc, target, "frmCalc-searched") && ok;
    // The same run by harvest entry, with the advanced columns.
    auto* byEntry = calc.findChild<QRadioButton*>("optReport_1");
    auto* advanced = calc.findChild<QCheckBox*>("chkAdvanced");
    if (byEntry && advanced) {
        byEntry->click();
        advanced->click();
        ok = save(calc, target, "frmCalc-polygon-advanced") && ok;
        advanced->click();
        calc.findChild<QRadioButton*>("optReport_0")->click();
    } else {
        ok = false;
    }
    if (auto* status = calc.findChild<QWidget*>("frmCalcStatus"))
        ok = save(*status, target, "frmCalcStatus") && ok;
    else
        ok = false;
    ok = saveGraphScreens(calc, *m, host, target) && ok;
    ok = saveChartPictures(*m, run, target) && ok;
    frmCalcReport reportSettings(*m, host, &calc);
    ok = save(reportSettings, target, "frmCalcReport") && ok;
    reportSettings.hide();
    calc.hide();
    ok = saveCalcYieldScreens(*m, host, dataFolder, target) && ok;
    return ok ? 0 : 1;
}

}  // namespace arborex
