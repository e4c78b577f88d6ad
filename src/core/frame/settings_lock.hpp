#pragma once
// The settings screen's lock on each root of the store: two running copies must not edit the
// same settings at once. A lock is the taker's RunId in the value "Access"; a crash leaves it
// behind, and removing the value clears it.

#include <string>

#include "base/settings_store.hpp"

namespace arborex {

enum class LockResult {
    Taken,     // this copy holds the lock and may edit
    InUse,     // another copy holds it
    NoAccess,  // the root cannot be written (a user without administrator rights)
};

LockResult takeSettingsLock(SettingsStore& store, SettingsRoot root, const std::string& runId);
// Clears the lock of a root this copy took.
void releaseSettingsLock(SettingsStore& store, SettingsRoot root);
// The box that tells a user why a tab is read-only; empty for Taken.
std::string lockMessage(SettingsRoot root, LockResult result);

}  // namespace arborex
