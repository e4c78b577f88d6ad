#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>
#include <fstream>
#include <memory>

#include "base/messages.hpp"
#include "modal_driver.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"
#include "ui/frm_help.hpp"
#include "ui/frm_msg.hpp"
#include "ui/qt_prompt.hpp"

using namespace arborex;

namespace {

// A small catalogue read the way the program reads MESSAGES.DAT.
struct Catalogue {
    test::TempDir dir;
    MessageCatalogue messages;

    Catalogue() {
        const std::string path = dir.file("MESSAGES.DAT");
        std::ofstream(path) << "; polygon screen\r\n"
                               "&AREA\r\n"
                               "The area of the polygon in hectares.\r\n"
                               "Roads are not part of it.\r\n"
                               "&NOYIELD\r\n"
                               "These polygons have no curve:\r\n"
                               "%first\r\n"
                               "%second\r\n";
        test::FakeHost host;
        LoadMessages(messages, host, path);
    }
};

QPushButton* button(QWidget& screen, int index) {
    return screen.findChild<QPushButton*>(QString("cmdButton_%1").arg(index));
}

// Which of the four buttons are shown, as a mask.
int shownMask(QWidget& screen) {
    int mask = 0;
    for (int i = 0; i < 4; ++i)
        if (button(screen, i)->isVisible()) mask |= 1 << i;
    return mask;
}

}  // namespace

class FrmMsgTest : public QObject {
    Q_OBJECT
private slots:
    void theMaskChoosesTheButtons() {
        for (const int mask : {12, 3, 15, 1}) {
            frmMsg screen("Title", "Text", "", static_cast<int16_t>(mask), 0);
            screen.show();
            QCOMPARE(shownMask(screen), mask);
        }
        frmMsg screen("Title", "Text", "", 15, 0);
        QCOMPARE(button(screen, 0)->text(), QString("OK"));
        QCOMPARE(button(screen, 1)->text(), QString("Cancel"));
        QCOMPARE(button(screen, 2)->text(), QString("Yes"));
        QCOMPARE(button(screen, 3)->text(), QString("No"));
    }

    void eachButtonGivesTwoToThePowerOfItsIndex() {
        const int16_t expected[4] = {MsgOk, MsgCancel, MsgYes, MsgNo};
        for (int i = 0; i < 4; ++i) {
            frmMsg screen("Title", "Text", "", 15, 0);
            screen.show();
            QTest::mouseClick(button(screen, i), Qt::LeftButton);
            QCOMPARE(screen.MsgResult(), expected[i]);
            QCOMPARE(screen.result(), int(expected[i]));
            QVERIFY(!screen.isVisible());
        }
    }

    void theDefaultButtonHasTheFocus() {
        frmMsg screen("Title", "Text", "", 12, 3);
        screen.show();
        QVERIFY(QTest::qWaitForWindowActive(&screen));
        QCOMPARE(screen.focusWidget(), button(screen, 3));
        QVERIFY(button(screen, 3)->isDefault());
        QTest::keyClick(screen.focusWidget(), Qt::Key_Return);
        QCOMPARE(screen.MsgResult(), int16_t(MsgNo));
    }

    void aHiddenDefaultTakesNoFocus() {
        frmMsg screen("Title", "Text", "", 12, 0);
        screen.show();
        QVERIFY(QTest::qWaitForWindowActive(&screen));
        QVERIFY(!button(screen, 0)->isDefault());
        QVERIFY(screen.focusWidget() != button(screen, 0));
    }

    // Escape and the close button answer as cautiously as the buttons allow.
    void closingGivesCancelElseNoElseOk() {
        const std::pair<int, int16_t> cases[] = {
            {15, MsgCancel}, {3, MsgCancel}, {12, MsgNo}, {1, MsgOk}};
        for (const auto& [mask, expected] : cases) {
            frmMsg screen("Title", "Text", "", static_cast<int16_t>(mask), 0);
            screen.show();
            QTest::keyClick(&screen, Qt::Key_Escape);
            QCOMPARE(screen.MsgResult(), expected);
        }
        frmMsg screen("Title", "Text", "", 12, 2);
        screen.show();
        screen.close();
        QCOMPARE(screen.MsgResult(), int16_t(MsgNo));
    }

    void theListBoxShowsTheListAndHidesWhenEmpty() {
        frmMsg withList("Missing curves", "Text", "Block 1\r\nBlock 7", 1, 0);
        withList.show();
        auto* list = withList.findChild<QPlainTextEdit*>("txtMSG");
        QVERIFY(list->isVisible());
        QVERIFY(list->isReadOnly());
        QCOMPARE(list->toPlainText(), QString("Block 1\nBlock 7"));
        QCOMPARE(withList.windowTitle(), QString("Missing curves"));

        frmMsg withoutList("Title", "Text", "", 1, 0);
        withoutList.show();
        QVERIFY(!withoutList.findChild<QPlainTextEdit*>("txtMSG")->isVisible());
    }

    // The whole road: nmsgbox resolves the tag, the desktop prompt shows the screen over its
    // parent, and the pressed button comes back as MsgResult.
    void nmsgboxShowsTheTagsTextOnTheScreen() {
        Catalogue catalogue;
        QtPrompt prompt;
        QString shownText;
        QString shownList;
        test::whenModalShown([&](QWidget* modal) {
            shownText = modal->findChild<QLabel*>("lblMSG")->text();
            shownList = modal->findChild<QPlainTextEdit*>("txtMSG")->toPlainText();
            modal->findChild<QPushButton*>("cmdButton_2")->click();
        });
        int16_t msgResult = 0;
        QCOMPARE(nmsgbox(catalogue.messages, prompt, "&AREA", "Poly 4", "Area", 12, 2, msgResult),
                 int16_t(MsgYes));
        QCOMPARE(msgResult, int16_t(MsgYes));
        QCOMPARE(shownText,
                 QString("The area of the polygon in hectares.\nRoads are not part of it."));
        QCOMPARE(shownList, QString("Poly 4"));

        test::whenModalShown([&](QWidget* modal) {
            shownText = modal->findChild<QLabel*>("lblMSG")->text();
            QTest::keyClick(modal, Qt::Key_Escape);
        });
        QCOMPARE(nmsgbox(catalogue.messages, prompt, "&X", "", "Area", 3, 0, msgResult),
                 int16_t(MsgCancel));
        QCOMPARE(shownText, QString("NOT FOUND - &X"));
    }

    void helpShowsTheParagraphForm() {
        Catalogue catalogue;
        frmHelp help(catalogue.messages, "&AREA");
        help.show();
        QCOMPARE(help.windowTitle(), QString("Help"));
        auto* text = help.findChild<QPlainTextEdit*>("txtHelp");
        QVERIFY(text->isReadOnly());
        QCOMPARE(text->toPlainText(),
                 QString("The area of the polygon in hectares.\n\nRoads are not part of it.\n\n"));
        help.setTag("&NOYIELD");
        QCOMPARE(text->toPlainText(), QString("These polygons have no curve:\n\nfirst\nsecond\n"));
        help.setTag("&GONE");
        QCOMPARE(text->toPlainText(), QString("NOT FOUND - &GONE"));
        QTest::mouseClick(help.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
        QVERIFY(!help.isVisible());
    }

    void helpFontStepsThroughItsSizesAndWraps() {
        Catalogue catalogue;
        frmHelp help(catalogue.messages, "&AREA");
        help.show();
        auto* text = help.findChild<QPlainTextEdit*>("txtHelp");
        QCOMPARE(text->font().pointSize(), 9);
        for (const int size : {10, 12, 14, 16, 9, 10}) {
            QTest::mouseClick(help.findChild<QPushButton*>("cmdFont"), Qt::LeftButton);
            QCOMPARE(help.fontSize(), size);
            QCOMPARE(text->font().pointSize(), size);
        }
    }
};

QTEST_MAIN(FrmMsgTest)
#include "frm_msg_test.moc"
