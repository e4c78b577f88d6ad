// The calculation screen's graphs that the program draws itself: the standing volume by year in
// the graph window, and the age distribution screen. Without a calculation they do nothing.

#include "report/graph_data.hpp"
#include "ui/frm_age_dist.hpp"
#include "ui/frm_calc.hpp"
#include "ui/frm_graph.hpp"

namespace arborex {

void frmCalc::GraphTimeVolume() {
    if (m_.Calc.CutCount == 0) return;
    GraphPicture picture;
    if (!act("GraphTimeVolume", [this, &picture] {
            picture = arborex::GraphTimeVolume(m_, screen_, calendarYear(run_));
        }))
        return;
    if (!graph_) graph_ = new frmGraph(m_, host_, this);
    graph_->GraphScreen(std::move(picture));
    graph_->show();
    graph_->raise();
}

void frmCalc::mniAgeDist_Click() {
    if (m_.Calc.CutCount == 0) return;
    if (graph_) graph_->close();
    frmAgeDist screen(m_, host_, launcher_, this);
    screen.exec();
}

}  // namespace arborex
