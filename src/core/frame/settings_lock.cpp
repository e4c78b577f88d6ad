#include "frame/settings_lock.hpp"

namespace arborex {

LockResult takeSettingsLock(SettingsStore& store, SettingsRoot root, const std::string& runId) {
    if (!store.read(root, "", "Access").value_or("").empty()) return LockResult::InUse;
    store.write(root, "", "Access", runId);
    // A store that cannot be written keeps what it had: the read-back tells.
    if (store.read(root, "", "Access").value_or("") != runId) return LockResult::NoAccess;
    return LockResult::Taken;
}

void releaseSettingsLock(SettingsStore& store, SettingsRoot root) {
    store.write(root, "", "Access", "");
}

std::string lockMessage(SettingsRoot root, LockResult result) {
    const bool machine = root == SettingsRoot::Machine;
    switch (result) {
        case LockResult::InUse:
            return machine ? "Admin access is already in use by another user"
                           : "User access is already in use by another user";
        case LockResult::NoAccess:
            return machine ? "You do not have access to the administrative settings"
                           : "You do not have access to the user settings";
        case LockResult::Taken:
            break;
    }
    return {};
}

}  // namespace arborex
