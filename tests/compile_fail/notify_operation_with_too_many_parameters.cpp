#include "frame/observer.h"

using namespace norvane::frame;

using one_field = notification<1, 2, "one_field", event<word<"value", 72>>>;

class observer {
public:
    unsigned int notify(unsigned int value, unsigned int another);
};

void deliver(observer& to, bmc_mc_observer_server& server, const received& message)
{
    on<one_field, &observer::notify>::deliver(to, server, message);
}
