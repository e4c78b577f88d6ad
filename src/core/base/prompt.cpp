#include "base/prompt.hpp"

namespace arborex {

namespace {

Buttons boxButtons(int16_t mask) {
    const bool yesNo = (mask & MsgYes) && (mask & MsgNo);
    if (yesNo) return (mask & MsgCancel) ? Buttons::YesNoCancel : Buttons::YesNo;
    if ((mask & MsgOk) && (mask & MsgCancel)) return Buttons::OkCancel;
    return Buttons::Ok;
}

constexpr Answer kAnswerOfIndex[4] = {Answer::Ok, Answer::Cancel, Answer::Yes, Answer::No};

int16_t msgResultOf(Answer answer) {
    switch (answer) {
        case Answer::Ok:
            return MsgOk;
        case Answer::Cancel:
            return MsgCancel;
        case Answer::Yes:
            return MsgYes;
        case Answer::No:
            return MsgNo;
    }
    return MsgOk;
}

}  // namespace

int16_t Prompt::messageScreen(const std::string& title, const std::string& text,
                              const std::string& list, int16_t buttons, int16_t defaultButton) {
    const Answer preferred =
        defaultButton >= 0 && defaultButton < 4 ? kAnswerOfIndex[defaultButton] : Answer::Ok;
    const std::string body = list.empty() ? text : text + "\n\n" + list;
    return msgResultOf(ask(title, body, boxButtons(buttons), preferred, Icon::None));
}

}  // namespace arborex
