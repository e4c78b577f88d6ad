// The yield run screen's controls: the checks' two lists on the first tab, the progress of each
// model's steps on the second, the models' messages on the third, and under the tabs the boxes
// that choose what is run and the buttons.

#include <QApplication>
#include <QCheckBox>
#include <QFontMetricsF>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTextOption>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "ui/frm_calc_yield.hpp"

namespace arborex {

namespace {

constexpr int kTextMargin = 3;

// A horizontal dialog unit: a quarter of the average width of the letters A to Z and a to z.
qreal dialogUnit(const QFont& font) {
    static const QString letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    return QFontMetricsF(font).horizontalAdvance(letters) / letters.size() / 4.0;
}

// Draws a row's tab-separated parts at the lists' tab stops, 50 and 80 dialog units, so that
// the polygon names and the texts line up in columns.
class TabStopDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem row(option);
        initStyleOption(&row, index);
        const QString text = row.text;
        row.text.clear();
        const QWidget* widget = row.widget;
        QStyle* style = widget ? widget->style() : QApplication::style();
        style->drawControl(QStyle::CE_ItemViewItem, &row, painter, widget);

        QTextOption layout(Qt::AlignLeft | Qt::AlignVCenter);
        layout.setWrapMode(QTextOption::NoWrap);
        const std::array<int, 3> stops = tabStops(row.font);
        layout.setTabArray({qreal(stops[0]), qreal(stops[1])});
        const QPalette::ColorGroup group = !(row.state & QStyle::State_Enabled) ? QPalette::Disabled
                                           : (row.state & QStyle::State_Active)
                                               ? QPalette::Active
                                               : QPalette::Inactive;
        const QPalette::ColorRole role =
            (row.state & QStyle::State_Selected) ? QPalette::HighlightedText : QPalette::Text;
        painter->save();
        painter->setFont(row.font);
        painter->setPen(row.palette.color(group, role));
        painter->drawText(QRectF(row.rect.adjusted(kTextMargin, 0, -kTextMargin, 0)), text, layout);
        painter->restore();
    }

    // As wide as the row drawn at the stops, so that the list scrolls to the end of a long one.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QStyleOptionViewItem row(option);
        initStyleOption(&row, index);
        std::array<int, 3> stops = tabStops(row.font);
        const QRect text = QFontMetrics(row.font).boundingRect(QRect(), Qt::TextExpandTabs,
                                                               row.text, 0, stops.data());
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        size.setWidth(text.width() + 2 * kTextMargin);
        return size;
    }

private:
    // In pixels, ending in 0 as the font metrics want them.
    static std::array<int, 3> tabStops(const QFont& font) {
        const qreal unit = dialogUnit(font);
        return {qRound(50 * unit), qRound(80 * unit), 0};
    }
};

QLabel* titled(const QString& text, QWidget* buddy, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setBuddy(buddy);
    return label;
}

}  // namespace

QListWidget* frmCalcYield::messageList(const char* name) {
    auto* list = new QListWidget(this);
    list->setObjectName(name);
    list->setItemDelegate(new TabStopDelegate(list));
    connect(list, &QListWidget::currentItemChanged, this, [this, list] { listClick(list); });
    return list;
}

QPushButton* frmCalcYield::button(const char* name, const QString& caption) {
    auto* pressed = new QPushButton(caption, this);
    pressed->setObjectName(name);
    pressed->setAutoDefault(false);
    return pressed;
}

QWidget* frmCalcYield::buildChecksTab() {
    auto* frame = new QWidget(this);
    frame->setObjectName("fra_0");
    lstErrors_ = messageList("lstErrors");
    lstWarn_ = messageList("lstWarn");
    lblStatus_ = new QLabel(frame);
    lblStatus_->setObjectName("lblStatus");
    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(titled("Pre-calculation Errors", lstErrors_, frame));
    layout->addWidget(lstErrors_, 1);
    layout->addWidget(titled("Pre-calculation Warnings", lstWarn_, frame));
    layout->addWidget(lstWarn_, 1);
    layout->addWidget(lblStatus_);
    return frame;
}

QWidget* frmCalcYield::buildCalculationTab() {
    auto* frame = new QWidget(this);
    frame->setObjectName("fra_1");
    const std::array<const char*, 8> captions = {
        "Export to VDYP:",  "VDYP:",  "Import VDYP Yield Curves:",  "Import VDYP Error File:",
        "Export to TIPSY:", "TIPSY:", "Import TIPSY Yield Curves:", "Import TIPSY Error File:"};
    // The captions of both models as wide as the widest, so that the labels line up.
    std::array<QLabel*, 8> titles{};
    int titleWidth = 0;
    for (std::size_t i = 0; i < titles.size(); ++i) {
        titles[i] = new QLabel(captions[i], frame);
        titleWidth = std::max(titleWidth, titles[i]->sizeHint().width());
    }
    auto* layout = new QVBoxLayout(frame);
    for (int model = 0; model < 2; ++model) {
        auto* group = new QGroupBox(model == 0 ? "VDYP" : "TIPSY", frame);
        auto* grid = new QGridLayout(group);
        grid->setColumnStretch(1, 1);
        for (int step = 0; step < 4; ++step) {
            const auto i = static_cast<std::size_t>(model * 4 + step);
            titles[i]->setMinimumWidth(titleWidth);
            auto* label = new QLabel(group);
            label->setObjectName(QString("lblStat_%1").arg(i));
            label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
            label->setMinimumWidth(220);
            lblStat_[i] = label;
            grid->addWidget(titles[i], step, 0);
            grid->addWidget(label, step, 1);
        }
        layout->addWidget(group);
    }
    layout->addStretch();
    return frame;
}

QWidget* frmCalcYield::buildPostTab() {
    auto* frame = new QWidget(this);
    frame->setObjectName("fra_2");
    lstPost_ = messageList("lstPost");
    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(titled("Post calculation Errors", lstPost_, frame));
    layout->addWidget(lstPost_, 1);
    return frame;
}

QWidget* frmCalcYield::buildControls() {
    auto* panel = new QWidget(this);
    auto* choices = new QGridLayout;
    const std::array<const char*, 2> models = {"Update VDYP", "Update TIPSY"};
    for (int i = 0; i < 2; ++i) {
        const auto k = static_cast<std::size_t>(i);
        chkToCalc_[k] = new QCheckBox(models[k], panel);
        chkToCalc_[k]->setObjectName(QString("chkToCalc_%1").arg(i));
        chkToCalc_[k]->setChecked(true);
        lblAmt_[k] = new QLabel("(0 of 0)", panel);
        lblAmt_[k]->setObjectName(QString("lblAmt_%1").arg(i));
        choices->addWidget(chkToCalc_[k], i, 0);
        choices->addWidget(lblAmt_[k], i, 1);
    }
    chkRecalcAll_ = new QCheckBox("Recalculate All", panel);
    chkRecalcAll_->setObjectName("chkRecalcAll");
    choices->addWidget(chkRecalcAll_, 2, 0);
    choices->setColumnStretch(2, 1);

    cmdOk_ = button("cmdOk", "Calculate Yield");
    cmdRefresh_ = button("cmdRefresh", "Refresh");
    cmdCancel_ = button("cmdCancel", "Cancel");
    cmdClose_ = button("cmdClose", "Close");
    connect(cmdOk_, &QPushButton::clicked, this, &frmCalcYield::cmdOk_Click);
    connect(cmdRefresh_, &QPushButton::clicked, this, &frmCalcYield::PreCalcCheck);
    connect(cmdCancel_, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdClose_, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdOk_);
    buttons->addWidget(cmdRefresh_);
    buttons->addStretch();
    buttons->addWidget(cmdCancel_);
    buttons->addWidget(cmdClose_);

    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(choices);
    layout->addLayout(buttons);
    return panel;
}

}  // namespace arborex
