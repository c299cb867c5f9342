#include "simulator/router.h"

namespace norvane::simulator {

std::vector<char> router::answer(const host::request& received) const
{
    const auto found = handlers_.find({received.interface_id, received.func_id});
    if (found != handlers_.end()) return found->second(received);
    // Without a row nobody knows where the result stands: wherever it can, behind the header or at the
    // end of the record.
    std::vector<char> record(received.reply_room, '\0');
    const auto put = [&](std::size_t offset) {
        if (offset >= frame::reply_header && offset + sizeof errors_.unknown_request <= record.size()) {
            std::memcpy(record.data() + offset, &errors_.unknown_request, sizeof errors_.unknown_request);
        }
    };
    put(frame::reply_header);
    put(record.size() - sizeof errors_.unknown_request);
    return record;
}

}  // namespace norvane::simulator
