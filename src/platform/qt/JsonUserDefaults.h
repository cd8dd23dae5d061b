// SPDX-License-Identifier: MIT
// Preferences in one JSON file. Changes are written together, at most twice a second, and merged key by key with
// what other processes, or a person, have written; the file on the disk is always whole. Main thread only.
#pragma once

#include "base/Clock.h"
#include "base/UserDefaults.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <tl/expected.hpp>

namespace lumenvale {

class JsonUserDefaults final : public UserDefaults {
public:
    /// Receives whole sentences for the user; may be empty.
    using Report = std::function<void(const std::string&)>;

    /// Reads the file at `path`, which need not exist. `domain(NAME)` reads `domainFolder`/NAME/preferences.json.
    /// `report` hears when a file is not readable as preferences. `clock` must outlive the object.
    JsonUserDefaults(std::string path, std::string domainFolder, Clock& clock, Report report);
    JsonUserDefaults(const JsonUserDefaults&) = delete;
    JsonUserDefaults& operator=(const JsonUserDefaults&) = delete;
    /// Writes what is not yet written.
    ~JsonUserDefaults() override;

    std::optional<PropertyValue> value(const std::string& key) const override;
    void set(const std::string& key, std::optional<PropertyValue> next) override;
    PropertyDictionary domain(const std::string& name) const override;
    Subscription observeFailures(std::function<void(const std::string&)> observer) override;
    /// Tries again what failed before.
    void flush() override;

private:
    tl::expected<void, std::string> save();
    tl::expected<void, std::string> writeChanges();

    std::string path;
    std::string domainFolder;
    Clock& clock;
    Report report;
    std::map<std::string, PropertyValue> values; // as read at the start, and as set since
    std::set<std::string> changed;               // set since the last successful write
    bool mustKeepCopy = false;                   // the file holds what was not understood
    bool hasFailed = false;                      // the last write
    Clock::TimerId timer = 0;
    Signal<const std::string&> failures;
};

} // namespace lumenvale
