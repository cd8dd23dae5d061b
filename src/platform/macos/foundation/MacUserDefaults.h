// SPDX-License-Identifier: MIT
// One domain of the user's preferences database, exactly as it is spelt: the system's own search through other
// domains is not wanted, and neither are the keys that a portable settings class would make of ours. Main thread
// only.
#pragma once

#include "base/Clock.h"
#include "base/UserDefaults.h"

#include <string>

namespace lumenvale {

class MacUserDefaults final : public UserDefaults {
public:
    /// `application` names the domain; `clock` must outlive the object.
    MacUserDefaults(std::string application, Clock& clock);
    MacUserDefaults(const MacUserDefaults&) = delete;
    MacUserDefaults& operator=(const MacUserDefaults&) = delete;
    /// Writes what is not yet written.
    ~MacUserDefaults() override;

    std::optional<PropertyValue> value(const std::string& key) const override;
    void set(const std::string& key, std::optional<PropertyValue> next) override;
    PropertyDictionary domain(const std::string& name) const override;
    Subscription observeFailures(std::function<void(const std::string&)> observer) override;
    void flush() override;

private:
    std::string application;
    Clock& clock;
    Clock::TimerId timer = 0;
    bool isChanged = false; // since the last successful write
    bool hasFailed = false; // the last change or write
    Signal<const std::string&> failures;
};

} // namespace lumenvale
