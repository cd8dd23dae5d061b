// SPDX-License-Identifier: MIT
// Preferences in one INI file. Changes are written together, at most twice a second, and merged key by key with
// what other processes have written; the file on the disk is always whole. Main thread only.
#pragma once

#include "base/Clock.h"
#include "base/UserDefaults.h"

#include <QString>
#include <map>
#include <set>
#include <string>
#include <tl/expected.hpp>

namespace lumenvale {

class IniUserDefaults final : public UserDefaults {
public:
    /// Reads the file at `path`, which need not exist. `domain(NAME)` reads `domainFolder`/NAME.ini. `clock` must
    /// outlive the object.
    IniUserDefaults(std::string path, std::string domainFolder, Clock& clock);
    IniUserDefaults(const IniUserDefaults&) = delete;
    IniUserDefaults& operator=(const IniUserDefaults&) = delete;
    /// Writes what is not yet written.
    ~IniUserDefaults() override;

    std::optional<PropertyValue> value(const std::string& key) const override;
    void set(const std::string& key, std::optional<PropertyValue> next) override;
    PropertyDictionary domain(const std::string& name) const override;
    Subscription observeFailures(std::function<void(const std::string&)> observer) override;
    /// Tries again what failed before.
    void flush() override;

private:
    tl::expected<void, std::string> save();
    void writeChanges(const QString& file) const;

    std::string path;
    std::string domainFolder;
    Clock& clock;
    std::map<std::string, PropertyValue> values; // as read at the start, and as set since
    std::set<std::string> changed;               // set since the last successful write
    bool isDamaged = false;                      // the file, as found at the start
    bool hasFailed = false;                      // the last write
    Clock::TimerId timer = 0;
    Signal<const std::string&> failures;
};

} // namespace lumenvale
