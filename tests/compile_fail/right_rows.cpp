// What the wrong rows would be if they were right, so that each of them fails for its own error only.
#include "frame/observer.h"
#include "frame/paged_list.h"

using namespace norvane::frame;

using plain = operation<1, 2, "plain", request<80, word<"one", 72>, word<"other", 76>>,
    reply<24, result<12>, word<"one", 16>, word<"other", 20>>>;
using named = operation<1, 3, "named", request<96, text<"name", 72, 16, 15>, record<"info", "INFO", 88, 8>>>;
using renamed = operation<1, 3, "renamed", request<72>>;
using elements = page<operation<1, 4, "elements", request<76, word<"block", 72>>,
    reply<20, result<12>, word<"count", 16>>>, "INFO", 8, 50>;
using notified = notification<1, 2, "notified", event<half<"source", 72>, octet<"rest", 74>>>;

static_assert(row_list<plain, named, renamed, elements>::distinct({3}));
static_assert(!row_list<plain, named, renamed, elements>::distinct());

struct eight_bytes {
    char bytes[8];
};

class observer {
public:
    unsigned int notify(unsigned short source, unsigned char rest);
};

unsigned int send(bmc_mc_client* client, unsigned int& one, unsigned int& other, eight_bytes* info)
{
    const auto succeed = [](auto) { return 0U; };
    return call<plain>(client, with(1, 2), into(one, other)) + call<named>(client, with("name", *info)) +
           call<renamed>(client) + get_page<elements>(client, with(1), one, info, succeed, succeed, 7);
}

void deliver(observer& to, bmc_mc_observer_server& server, const received& message)
{
    on<notified, &observer::notify>::deliver(to, server, message);
}
