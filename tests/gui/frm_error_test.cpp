#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>

#include "modal_driver.hpp"
#include "ui/frm_error.hpp"
#include "ui/qt_prompt.hpp"

using namespace arborex;

namespace {

FailureReport overflowReport() {
    return FailureReport{6, "Overflow", "cmdCalculate_Click / frmCalc", {}};
}

template <typename T>
T* child(QWidget& screen, const char* name) {
    T* found = screen.findChild<T*>(name);
    if (!found) qFatal("no control %s", name);
    return found;
}

QString textOf(QWidget& screen, const char* name) {
    return child<QAbstractButton>(screen, name)->text();
}

}  // namespace

class FrmErrorTest : public QObject {
    Q_OBJECT
private slots:
    void showsTheFailureUnderItsCaptions() {
        frmError screen(overflowReport());
        QCOMPARE(screen.windowTitle(), QString("ERROR"));
        QCOMPARE(child<QLineEdit>(screen, "txtLocation")->text(),
                 QString("cmdCalculate_Click / frmCalc"));
        QCOMPARE(child<QLineEdit>(screen, "txtErrNum")->text(), QString("6"));
        QCOMPARE(child<QPlainTextEdit>(screen, "txtMessage")->toPlainText(), QString("Overflow"));
        QVERIFY(child<QLineEdit>(screen, "txtLocation")->isReadOnly());
        QVERIFY(child<QLineEdit>(screen, "txtErrNum")->isReadOnly());
        QVERIFY(child<QPlainTextEdit>(screen, "txtMessage")->isReadOnly());
        QCOMPARE(child<QLabel>(screen, "lblLocation")->text(), QString("Page / Section Name"));
        QCOMPARE(child<QLabel>(screen, "lblErrNum")->text(), QString("Error Number"));
        QCOMPARE(child<QLabel>(screen, "lblMessage")->text(), QString("Message"));

        QCOMPARE(textOf(screen, "cmdRetry"), QString("Retry"));
        QCOMPARE(textOf(screen, "cmdIgnore"), QString("Ignore && Continue"));
        QCOMPARE(textOf(screen, "cmdExit"), QString("Exit Section"));
        QCOMPARE(textOf(screen, "cmdBackup"), QString("Backup my data now"));
        QCOMPARE(textOf(screen, "cmdEnd"), QString("End"));
        QCOMPARE(textOf(screen, "chkIgnore"),
                 QString("Always ignore this error (this session only)"));
        QCOMPARE(child<QLabel>(screen, "lblWarning")->text(),
                 QString("Warning:  If the error message is releated to disk access backing up "
                         "data will not allways work."));
    }

    void eachChoiceClosesTheScreenWithItsValue() {
        const std::pair<const char*, ErrorChoice> cases[] = {{"cmdRetry", ErrorChoice::Retry},
                                                             {"cmdIgnore", ErrorChoice::Ignore},
                                                             {"cmdExit", ErrorChoice::ExitSection}};
        for (const auto& [name, expected] : cases) {
            frmError screen(overflowReport());
            screen.show();
            QTest::mouseClick(child<QPushButton>(screen, name), Qt::LeftButton);
            QCOMPARE(screen.choice(), expected);
            QVERIFY(!screen.isVisible());
        }
    }

    void closingTheWindowLeavesTheSection() {
        frmError screen(overflowReport());
        screen.show();
        QTest::keyClick(&screen, Qt::Key_Escape);
        QVERIFY(!screen.isVisible());
        QCOMPARE(screen.choice(), ErrorChoice::ExitSection);
    }

    void backupSavesAndTheScreenStaysOpen() {
        int backups = 0;
        FailureReport report = overflowReport();
        report.backup = [&backups] { ++backups; };
        frmError screen(report);
        screen.show();
        auto* backup = child<QPushButton>(screen, "cmdBackup");
        QVERIFY(backup->isEnabled());
        QTest::mouseClick(backup, Qt::LeftButton);
        QTest::mouseClick(backup, Qt::LeftButton);
        QCOMPARE(backups, 2);
        QVERIFY(screen.isVisible());
        QTest::mouseClick(child<QPushButton>(screen, "cmdIgnore"), Qt::LeftButton);
        QCOMPARE(screen.choice(), ErrorChoice::Ignore);
    }

    void backupIsDisabledWithNothingToSave() {
        frmError screen(overflowReport());
        QVERIFY(!child<QPushButton>(screen, "cmdBackup")->isEnabled());
    }

    void endRunsTheEndAction() {
        frmError screen(overflowReport());
        int ends = 0;
        screen.setEndAction([&ends] { ++ends; });
        screen.show();
        QTest::mouseClick(child<QPushButton>(screen, "cmdEnd"), Qt::LeftButton);
        QCOMPARE(ends, 1);
    }

    void theDesktopPromptShowsTheScreenModally() {
        QtPrompt prompt;
        QString shownNumber;
        test::whenModalShown([&](QWidget* modal) {
            shownNumber = child<QLineEdit>(*modal, "txtErrNum")->text();
            child<QPushButton>(*modal, "cmdRetry")->click();
        });
        QCOMPARE(prompt.reportError(overflowReport()), ErrorChoice::Retry);
        QCOMPARE(shownNumber, QString("6"));

        test::whenModalShown([](QWidget* modal) { modal->close(); });
        QCOMPARE(prompt.reportError(overflowReport()), ErrorChoice::ExitSection);
    }
};

QTEST_MAIN(FrmErrorTest)
#include "frm_error_test.moc"
