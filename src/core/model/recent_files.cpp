#include "model/recent_files.hpp"

#include <algorithm>

namespace arborex {

static constexpr int kRecentCount = 4;

void OrderLast(Model& m, Host& host, int index) {
    if (index < 0 || index >= kRecentCount) return;
    std::rotate(m.LastFiles.begin(), m.LastFiles.begin() + index, m.LastFiles.begin() + index + 1);
    host.views.recentFilesChanged();
}

void AddLast(Model& m, Host& host, const std::string& path) {
    for (int i = 0; i < kRecentCount; ++i) {
        if (m.LastFiles[i] == path) {
            OrderLast(m, host, i);
            return;
        }
    }
    std::move_backward(m.LastFiles.begin(), m.LastFiles.end() - 1, m.LastFiles.end());
    m.LastFiles[0] = path;
    host.views.recentFilesChanged();
}

void SaveRegLast(const Model& m, SettingsStore& settings) {
    for (int i = 0; i < kRecentCount; ++i)
        settings.write(SettingsRoot::User, "FILES", "FILE" + std::to_string(i), m.LastFiles[i]);
}

void LoadRegLast(Model& m, SettingsStore& settings) {
    for (int i = 0; i < kRecentCount; ++i)
        m.LastFiles[i] = getRegStr(settings, "FILES", "FILE" + std::to_string(i), "", false);
}

std::string recentCaption(const Model& m, int index) {
    const std::string& path = m.LastFiles.at(static_cast<std::size_t>(index));
    std::string caption = "&";
    caption += std::to_string(index);
    caption += path.empty() ? "   -empty-" : " " + path;
    return caption;
}

}  // namespace arborex
