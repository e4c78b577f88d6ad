#pragma once
// The message screen: a text, an optional list below it, and any of the four buttons OK,
// Cancel, Yes and No. Asks every question whose text comes from the message catalogue.

#include <QDialog>
#include <array>
#include <cstdint>
#include <string>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace arborex {

class frmMsg final : public QDialog {
    Q_OBJECT
public:
    // `text` is shown as given (a catalogue text is resolved by the caller); `list` fills the
    // scrolling box, which is hidden when the list is empty. Button i (0 OK, 1 Cancel, 2 Yes,
    // 3 No) is shown when bit i of `buttons` is set; `defaultButton` is the index of the button
    // that takes the focus on showing, when it is shown.
    frmMsg(const std::string& title, const std::string& text, const std::string& list,
           int16_t buttons, int16_t defaultButton, QWidget* parent = nullptr);

    // The pressed button as a MsgButton value: 2 to the power of its index. Closing the window
    // any other way (close button, Escape) counts as Cancel when Cancel is shown, else as No
    // when No is shown, else as OK. exec() returns the same value.
    int16_t MsgResult() const { return msgResult_; }

    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void cmdButton_Click(int index);
    bool isShown(int index) const;

    std::array<QPushButton*, 4> cmdButton_{};
    QLabel* lblMSG_;
    QPlainTextEdit* txtMSG_;
    int16_t defaultButton_;
    int16_t msgResult_ = 0;
};

}  // namespace arborex
