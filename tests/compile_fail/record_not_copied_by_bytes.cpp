#include "frame/call.h"

#include <string>

using namespace norvane::frame;

using takes_a_record = operation<1, 2, "takes_a_record",
    request<200, record<"info", "INFO", 72, sizeof(std::string)>>>;

unsigned int send(bmc_mc_client* client, const std::string& info)
{
    return call<takes_a_record>(client, with(info));
}
