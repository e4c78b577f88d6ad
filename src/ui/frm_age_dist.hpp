#pragma once
// "Age Distribution Graph": six years with a fill style and a colour each, and one fill type for
// all. Graph draws the standing area by age class of those years in the graph window; New Graph
// writes areagraph.txt and hands it to the graphing program. Opened from the calculation screen
// only when a calculation exists.

#include <QDialog>
#include <QPointer>
#include <array>

#include "base/document_launcher.hpp"
#include "base/host.hpp"
#include "model/model.hpp"
#include "report/graph_files.hpp"

class QComboBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace arborex {

class frmGraph;

class frmAgeDist final : public QDialog {
    Q_OBJECT
public:
    // `launcher` starts the graphing program; null takes the desktop's.
    frmAgeDist(Model& m, Host& host, DocumentLauncher* launcher, QWidget* parent = nullptr);

    // The screen's choices as the control file and the picture take them.
    AgeGraphRequest request() const;
    // The graph window the last Graph opened, if still open.
    frmGraph* graphWindow() const { return graph_; }

    void cmdGraph_Click();
    void cmdNewGraph_Click();
    void picCol_Click(int index);

private:
    void setupdefaults();
    void paintColour(int index);

    Model& m_;
    Host& host_;
    DocumentLauncher* launcher_;
    std::array<QLineEdit*, 6> txtYear_{};
    std::array<QComboBox*, 6> lstFillStyle_{};
    std::array<QPushButton*, 6> picCol_{};
    std::array<int32_t, 6> colours_{};
    std::array<QRadioButton*, 3> optFillType_{};
    QPointer<frmGraph> graph_;
};

}  // namespace arborex
