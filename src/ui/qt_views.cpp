#include "ui/qt_views.hpp"

#include "ui/frm_arbo.hpp"

namespace arborex {

void QtViews::recentFilesChanged() {
    if (main_) main_->refreshRecentMenu();
}

void QtViews::projectRenamed() {
    if (main_) main_->UpdateCaption();
}

}  // namespace arborex
