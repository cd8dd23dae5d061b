// SPDX-License-Identifier: MIT
// Preferences that last as long as the object. For try-outs and tests.
#pragma once

#include "base/UserDefaults.h"

#include <map>
#include <string>

namespace lumenvale {

class MemoryUserDefaults final : public UserDefaults {
public:
    std::optional<PropertyValue> value(const std::string& key) const override;
    void set(const std::string& key, std::optional<PropertyValue> next) override;
    PropertyDictionary domain(const std::string& name) const override;
    Subscription observeFailures(std::function<void(const std::string&)> observer) override;
    void flush() override {}

    std::map<std::string, PropertyValue> values;
    std::map<std::string, PropertyDictionary> domains;
    /// When not empty, `set` changes nothing and reports this text, and the first one after it that all is well.
    std::string failure;
    /// What `observeFailures` hears; for tests.
    Signal<const std::string&> failures;

private:
    bool hasFailed = false; // the last `set`
};

} // namespace lumenvale
