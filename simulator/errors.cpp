#include "simulator/errors.h"

namespace norvane::simulator {

errors::errors(const node& device)
{
    for (const auto& [name, value] : device["errors"].members()) {
        const auto known = codes_.find(name);
        if (known == codes_.end()) {
            std::string names;
            for (const auto& [each, code] : codes_) names += (names.empty() ? "" : ", ") + each;
            value.fail("the name of an error: " + names);
        }
        known->second = value.number();
        if (known->second == 0) value.fail("an error's code, which is not 0");
    }
}

}  // namespace norvane::simulator
