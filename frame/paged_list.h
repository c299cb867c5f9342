// Lists by pages. A list too long for a reply is prepared, fetched page by page through a block of
// shared memory, and finished; the facade gives the steps that touch its partition.
#pragma once

#include "frame/call.h"

#include <cstring>

namespace norvane::frame {

/// Asks the service to prepare a list, hands back its two figures whatever the result, and, if the
/// service agreed, returns what `create` makes of the partition.
template <typename Row, typename... Values, typename Create>
unsigned int prepare_list(bmc_mc_client* client, const with<Values...>& in, const into<unsigned int, unsigned int>& out,
                          Create create)
{
    const unsigned int result = call<Row>(client, in, out);
    return result == 0 ? create() : result;
}

/// Fetches one page: `take` provides the block, the service fills it, `count` elements of it are
/// copied to `elements` (which must have room for a whole page; the service answers for the count)
/// and `give_back` frees it. A failure of either step replaces the service's result; elements without a
/// block are `no_block`.
template <typename Row, typename Element, typename... Values, typename Take, typename GiveBack>
unsigned int get_page(bmc_mc_client* client, const with<Values...>& in, unsigned int& count, Element* elements,
                      Take take, GiveBack give_back, unsigned int no_block)
{
    static_assert(sizeof(Element) == Row::element_size, "a page is made of the row's elements");
    void* block = nullptr;
    if (const unsigned int failure = take(&block)) return failure;
    unsigned int counted = 0;
    const unsigned int result = call<Row>(client, in, into(counted));
    count = counted;
    if (counted != 0) {
        if (block == nullptr) return no_block;
        std::memcpy(elements, block, std::size_t{counted} * Row::element_size);
    }
    if (const unsigned int failure = give_back(block)) return failure;
    return result;
}

/// Tells the service that the list is done, whatever happened before, then releases the partition. A
/// failure of the release replaces the service's result.
template <typename Row, typename Release>
unsigned int finish_list(bmc_mc_client* client, unsigned int list, Release release)
{
    const unsigned int result = call<Row>(client, with(list));
    if (const unsigned int failure = release()) return failure;
    return result;
}

}  // namespace norvane::frame
