#include "frame/call.h"

using namespace norvane::frame;

using one_value = operation<1, 2, "one_value", request<76, word<"value", 72>>>;

unsigned int send(bmc_mc_client* client) { return call<one_value>(client, with(1, 2)); }
