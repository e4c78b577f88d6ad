// The polygon screen's fields: shown from the model, committed to it as each one is left, the
// help pane that follows the focus, and the lock while no polygon is on screen.

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include "base/display_format.hpp"
#include "base/messages.hpp"
#include "base/text.hpp"
#include "model/reference_tables.hpp"
#include "ui/frm_help.hpp"
#include "ui/frm_polygon.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

constexpr const char* kErrorColour = "color: rgb(255, 0, 0);";

// The index of a species row's key ("VS3" -> 2), -1 for any other key.
int speciesSlot(const std::string& key) {
    if (key.size() != 3 || (key.rfind("VS", 0) != 0 && key.rfind("TS", 0) != 0)) return -1;
    return key[2] - '1';
}

// Keys that end the field or move between fields pass; anything that would type is refused.
bool typesIntoField(const QKeyEvent& key) {
    switch (key.key()) {
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Escape:
            return false;
        case Qt::Key_Backspace:
        case Qt::Key_Delete:
            return true;
        default:
            return !key.text().isEmpty();
    }
}

}  // namespace

// ---- Showing ---------------------------------------------------------------------------------

const frmPolygon::EntryField* frmPolygon::entryOf(const QObject* widget) const {
    for (const EntryField& field : entries_)
        if (field.edit == widget) return &field;
    return nullptr;
}

std::string frmPolygon::entryText(const EntryField& field) const {
    const int p = m_.CurPoly;
    if (field.ref) {
        if (field.ref->field == PolyField::VSITEINDEX) return vsiText(m_, p);
        if (field.ref->field == PolyField::CLOSURE) return vccText(m_, p);
        return polygonFieldText(m_, p, *field.ref);
    }
    const PolyData& poly = m_.Poly[static_cast<std::size_t>(p)];
    if (field.key == "PSYU") return formatNumber(static_cast<int>(poly.PSYU), "0");
    if (field.key == "PSYUBLOCK") return poly.PSYUBLOCK.str();
    if (field.key == "NCDESC") return m_.PolyM[static_cast<std::size_t>(p)].NCDESC.str();
    const int slot = speciesSlot(field.key);
    if (slot < 0) return {};
    const auto k = static_cast<std::size_t>(slot);
    return field.key[0] == 'V' ? poly.VS[k].str() : poly.TS[k].str();
}

void frmPolygon::showEntry(const EntryField& field) {
    field.edit->setText(m_.CurPoly < 0 ? QString() : lq(entryText(field)));
}

void frmPolygon::showFields() {
    quiet_ = true;
    const bool locked = m_.CurPoly < 0;
    for (const EntryField& field : entries_) showEntry(field);
    showChoices();
    DisplaySpec();
    showTreatmentLabels();
    lblPSYUName_->setText(
        locked || m_.Poly[static_cast<std::size_t>(m_.CurPoly)].PSYU == 0
            ? QString()
            : lq(LookupPSYU(m_.Ref, m_.Poly[static_cast<std::size_t>(m_.CurPoly)].PSYU)));
    lockFields(locked);
    // Only a VDYP or TIPSY management has a curve to view.
    for (std::size_t k = 0; k < cmdYield_.size(); ++k) {
        const int16_t model = locked ? -1 : m_.Poly[static_cast<std::size_t>(m_.CurPoly)].MGNT[k];
        cmdYield_[k]->setEnabled(model == 0 || model == 1);
    }
    turnOnExtras();
    quiet_ = false;
}

void frmPolygon::showChoices() {
    const int p = m_.CurPoly;
    for (const ChoiceField& field : choices_)
        field.box->setCurrentIndex(p < 0 ? -1 : field.current(m_, p));
    for (const CheckField& field : checks_) field.box->setChecked(p >= 0 && field.current(m_, p));
    const int16_t silvi = p < 0 ? -1 : m_.Poly[static_cast<std::size_t>(p)].SILVI;
    // Unticking both options needs the group's exclusivity off for a moment.
    optCutMeth_[0]->setAutoExclusive(false);
    optCutMeth_[1]->setAutoExclusive(false);
    optCutMeth_[0]->setChecked(silvi == 0);
    optCutMeth_[1]->setChecked(silvi == 1);
    optCutMeth_[0]->setAutoExclusive(true);
    optCutMeth_[1]->setAutoExclusive(true);
}

void frmPolygon::DisplaySpec() {
    const int p = m_.CurPoly;
    for (std::size_t k = 0; k < lstVSpec_.size(); ++k) {
        const int index = p < 0 ? -1 : m_.Poly[static_cast<std::size_t>(p)].VSIDX[k];
        lstVSpec_[k]->setCurrentIndex(index < lstVSpec_[k]->count() ? index : -1);
    }
    for (std::size_t k = 0; k < lstTSpec_.size(); ++k) {
        const int index = p < 0 ? -1 : m_.Poly[static_cast<std::size_t>(p)].TSIDX[k];
        lstTSpec_[k]->setCurrentIndex(index < lstTSpec_[k]->count() ? index : -1);
    }
    ShowSpecPercErrV();
    ShowSpecPercErrT();
}

namespace {

// The percents' sum beside the column, in the error colour unless it is 100.
template <std::size_t N>
void showPercentSum(QLabel* sum, const std::array<QLineEdit*, N>& fields,
                    const std::array<int16_t, N>* percents) {
    int total = 0;
    if (percents)
        for (const int16_t percent : *percents) total += percent;
    const QString colour = percents && total != 100 ? kErrorColour : "";
    sum->setText(percents ? QString::number(total) : QString());
    sum->setStyleSheet(colour);
    for (QLineEdit* field : fields) field->setStyleSheet(colour);
}

}  // namespace

void frmPolygon::ShowSpecPercErrV() {
    const int p = m_.CurPoly;
    showPercentSum(lblVPerSum_, txtVPer_,
                   p < 0 ? nullptr : &m_.Poly[static_cast<std::size_t>(p)].VP);
}

void frmPolygon::ShowSpecPercErrT() {
    const int p = m_.CurPoly;
    showPercentSum(lblTPerSum_, txtTPer_,
                   p < 0 ? nullptr : &m_.Poly[static_cast<std::size_t>(p)].TP);
}

void frmPolygon::updateVSI() {
    if (const EntryField* field = entryOf(txtVData_[0])) showEntry(*field);
}

void frmPolygon::updateVCC() {
    if (const EntryField* field = entryOf(txtVData_[3])) showEntry(*field);
}

void frmPolygon::showTreatmentLabels() {
    if (m_.CurPoly < 0) {
        lblCommThin_->clear();
        lblFert_->clear();
        return;
    }
    const PolyMgmt& mgmt = m_.PolyM[static_cast<std::size_t>(m_.CurPoly)];
    lblCommThin_->setText(mgmt.COMTHIN == 1
                              ? lq("at a Height of " + formatNumber(mgmt.CTHEIGHT, "") + "m to " +
                                   formatNumber(static_cast<int>(mgmt.CTSTEMHA), "") + "stems/ha")
                              : QString("Disabled"));
    lblFert_->setText(mgmt.FERT == 1
                          ? lq("at age " + formatNumber(static_cast<int>(mgmt.FSTARTYEAR), "") +
                               " - " + "PFA Standards")
                          : QString("Disabled"));
}

void frmPolygon::lockFields(bool locked) {
    for (const ChoiceField& field : choices_) field.box->setEnabled(!locked);
    for (const CheckField& field : checks_) field.box->setEnabled(!locked);
    for (QComboBox* box : lstVSpec_) box->setEnabled(!locked);
    for (QComboBox* box : lstTSpec_) box->setEnabled(!locked);
    for (QRadioButton* option : optCutMeth_) option->setEnabled(!locked);
    for (QPushButton* button : {cmdPoly_[1], cmdPoly_[2], cmdPSYULookup_, cmdPSYUFind_})
        button->setEnabled(!locked);
    cmdCT_->setEnabled(!locked);
    cmdFert_->setEnabled(!locked);
    for (const char* name : {"mniDelPoly", "mniRenPoly", "mniSaveDefault"})
        if (auto* action = findChild<QAction*>(name)) action->setEnabled(!locked);
}

void frmPolygon::turnOnExtras() {
    const bool open = m_.CurPoly >= 0;
    const ProjectSettings& s = m_.Settings;
    txtVData_[5]->setEnabled(open && s.VDYPPSYUB == 1);
    // The first species' height and site index always go to TIPSY; the others only on demand.
    for (std::size_t k = 1; k < txtTHeight_.size(); ++k) {
        txtTHeight_[k]->setEnabled(s.TIPSYHEIGHT == 1);
        txtTSite_[k]->setEnabled(s.TIPSYSITE == 1);
    }
}

// ---- Committing --------------------------------------------------------------------------------

void frmPolygon::LoseLastFocus() {
    if (auto* edit = qobject_cast<QLineEdit*>(focusWidget())) commitEntry(edit);
}

void frmPolygon::commitEntry(QLineEdit* edit) {
    const EntryField* field = entryOf(edit);
    // A field left as it was shown holds the model's value already.
    if (!field || !edit->isModified() || m_.CurPoly < 0) return;
    edit->setModified(false);
    const std::string text = ls(edit->text());
    std::string shown;
    const int species = speciesSlot(field->key);
    const bool stored = act(qPrintable(edit->objectName() + "_LostFocus"), [&] {
        if (field->ref)
            shown = commitPolygonField(m_, host_.prompt, m_.CurPoly, *field->ref, text);
        else if (species >= 0)
            bindSpecies(species, field->key[0] == 'T', text);
        else
            setPolygonValue(m_, host_.prompt, m_.CurPoly, field->key, text);
    });
    quiet_ = true;
    if (stored && field->ref) {
        edit->setText(lq(shown));
        if (field->ref->field == PolyField::VSITEINDEX) updateVSI();
        if (field->ref->field == PolyField::CLOSURE) updateVCC();
        if (field->ref->field == PolyField::VP) ShowSpecPercErrV();
        if (field->ref->field == PolyField::TP) ShowSpecPercErrT();
        quiet_ = false;
        return;
    }
    quiet_ = false;
    // A code binds its species, the PSYU its name; a failed store shows the model's value.
    showFields();
}

void frmPolygon::commitValue(const char* routine, const std::string& key, const std::string& text) {
    if (quiet_ || m_.CurPoly < 0) return;
    act(routine, [&] { setPolygonValue(m_, host_.prompt, m_.CurPoly, key, text); });
    showFields();
}

void frmPolygon::commitChoice(const ChoiceField& field, int index) {
    if (index < 0) return;
    const std::string value =
        field.storesText ? ls(field.box->itemText(index)) : std::to_string(index);
    commitValue(qPrintable(field.box->objectName() + "_Click"), field.key, value);
}

void frmPolygon::commitCheck(const CheckField& field) {
    commitValue(qPrintable(field.box->objectName() + "_Click"), field.key,
                field.box->isChecked() ? "1" : "0");
}

void frmPolygon::commitSpecies(int row, bool tipsy, int tableIndex) {
    const auto& table = tipsy ? m_.Ref.SpeciesT : m_.Ref.SpeciesV;
    if (quiet_ || m_.CurPoly < 0 || tableIndex < 0 || tableIndex >= static_cast<int>(table.size()))
        return;
    act(tipsy ? "lstTSpec_Click" : "lstVSpec_Click",
        [&] { bindSpecies(row, tipsy, table[static_cast<std::size_t>(tableIndex)].Code.str()); });
    showFields();
}

// A code binds to its row of the species table, through the aliases, and then reads as the
// table's code. A code the table does not know is no failure: it stays as typed, with no
// species ("- None -").
void frmPolygon::bindSpecies(int row, bool tipsy, const std::string& typed) {
    const ReferenceTables& ref = m_.Ref;
    const std::string code = toUpper(trim(typed));
    const int16_t index = tipsy ? FindTSpecIdx(ref, code) : FindVSpecIdx(ref, code);
    const auto& table = tipsy ? ref.SpeciesT : ref.SpeciesV;
    const Code2 stored = index > 0 ? table.at(static_cast<std::size_t>(index)).Code : Code2(code);
    PolyData& poly = m_.Poly.at(static_cast<std::size_t>(m_.CurPoly));
    const auto k = static_cast<std::size_t>(row);
    if (tipsy) {
        poly.TS.at(k) = stored;
        poly.TSIDX.at(k) = index;
    } else {
        poly.VS.at(k) = stored;
        poly.VSIDX.at(k) = index;
    }
}

// ---- Help and the focus ------------------------------------------------------------------------

void frmPolygon::showHelpTag(const std::string& tag) {
    QString text = lq(msgPoly(m_.HelpTag, m_.Messages, tag));
    txtHelp_->setPlainText(text.replace("\r\n", "\n"));
}

void frmPolygon::openHelp() {
    if (!help_) {
        help_ = new frmHelp(m_.Messages, m_.HelpTag, this);
        help_->setAttribute(Qt::WA_DeleteOnClose);
    } else {
        help_->setTag(m_.HelpTag);
    }
    help_->show();
    help_->raise();
}

bool frmPolygon::eventFilter(QObject* watched, QEvent* event) {
    auto* edit = qobject_cast<QLineEdit*>(watched);
    switch (event->type()) {
        case QEvent::FocusIn:
            if (helpTags_.contains(watched)) showHelpTag(ls(helpTags_.value(watched)));
            // Selected once the event loop runs again: a mouse click that gave the focus would
            // otherwise place the cursor over the selection.
            if (edit) QTimer::singleShot(0, edit, &QLineEdit::selectAll);
            break;
        case QEvent::FocusOut: {
            // Switching to another window or opening a menu does not leave the field.
            const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
            if (edit && reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
                commitEntry(edit);
            break;
        }
        case QEvent::KeyPress:
            if (edit && m_.CurPoly < 0 && typesIntoField(*static_cast<QKeyEvent*>(event)))
                return true;
            break;
        case QEvent::MouseButtonDblClick:
            if (watched == txtVData_[4] && m_.CurPoly >= 0) {
                openPsyuLookup();
                return true;
            }
            if (helpTags_.contains(watched)) {
                openHelp();
                return true;
            }
            break;
        default:
            break;
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace arborex
