#include "ui/qt_views.hpp"

#include "ui/frm_arbo.hpp"
#include "ui/frm_polygon.hpp"

namespace arborex {

void QtViews::recentFilesChanged() {
    if (main_) main_->refreshRecentMenu();
}

void QtViews::projectRenamed() {
    if (main_) main_->UpdateCaption();
}

bool QtViews::polygonScreenOpen() {
    return main_ && main_->polygonScreen() && main_->polygonScreen()->isVisible();
}

void QtViews::redisplayPolygons(int select) {
    if (polygonScreenOpen()) main_->polygonScreen()->redisplayPolygons(select);
}

}  // namespace arborex
