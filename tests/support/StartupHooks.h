// A start-up hook that records its calls, for the tests of the start-up table and of the
// application that runs the hooks.
#pragma once

#include <vector>

#include <GwStartup.h>

namespace testing_startup {

// The calls of the hooks, in their order: the hook's number for initInstance, its negation
// for exitInstance.
inline std::vector<int> gVisits;

class Hook : public GwStartup {
public:
    explicit Hook(int number) : mNumber(number) {}
    bool initInstance() override {
        gVisits.push_back(mNumber);
        return true;
    }
    bool exitInstance() override {
        gVisits.push_back(-mNumber);
        return true;
    }

private:
    int mNumber;
};

} // namespace testing_startup
