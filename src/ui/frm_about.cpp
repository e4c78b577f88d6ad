#include "ui/frm_about.hpp"

#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "model/model.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

frmAbout::frmAbout(QWidget* parent, bool splash)
    : QDialog(parent, splash ? Qt::SplashScreen | Qt::FramelessWindowHint : Qt::Dialog) {
    setObjectName("frmAbout");
    setWindowTitle("About " + QString(kProgramTitle));
    setAttribute(Qt::WA_DeleteOnClose);

    auto* title = new QLabel(kProgramTitle, this);
    title->setObjectName("lblTitle");
    QFont big = title->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    title->setFont(big);
    auto* version = new QLabel("Version " + QString(kProgramVersion), this);
    version->setObjectName("lblVersion");
    auto* purpose = new QLabel(
        "Harvest planning for small forest tenures: yield curves from VDYP and TIPSY, "
        "harvest schedules, and the highest sustainable rate of cut.",
        this);
    purpose->setObjectName("lblPurpose");
    purpose->setWordWrap(true);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(10);
    layout->addWidget(title, 0, Qt::AlignHCenter);
    layout->addWidget(version, 0, Qt::AlignHCenter);
    layout->addWidget(purpose);
    if (!splash) {
        auto* ok = new QPushButton("OK", this);
        ok->setObjectName("cmdOK");
        ok->setDefault(true);
        connect(ok, &QPushButton::clicked, this, &QDialog::accept);
        layout->addWidget(ok, 0, Qt::AlignRight);
    }
    setFixedWidth(420);
}

frmAbout* frmAbout::showAbout(QWidget* parent) {
    auto* about = new frmAbout(parent);
    about->open();
    return about;
}

frmAbout* frmAbout::showSplash(QWidget* parent, int milliseconds) {
    auto* about = new frmAbout(parent, true);
    about->show();
    centerme(*about);
    auto* timer = new QTimer(about);
    timer->setObjectName("timSplash");
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, about, &QDialog::close);
    timer->start(milliseconds);
    return about;
}

}  // namespace arborex
