#include "simulator/pages.h"

#include "host/partition.h"
#include "host/service.h"

#include <algorithm>
#include <cstring>

namespace norvane::simulator {

std::uint32_t prepared_lists::prepare(int process, const std::string& kind, std::vector<element> elements,
                                      std::uint32_t page_length, std::uint32_t capacity)
{
    const std::uint32_t length = page_length == 0 ? capacity : std::min(page_length, capacity);
    const auto pages = static_cast<std::uint32_t>((elements.size() + length - 1) / length);
    const std::lock_guard lock(mutex_);
    lists_[{process, kind}] = {std::move(elements), length};
    return pages;
}

std::uint32_t prepared_lists::write(int process, const std::string& kind, std::uint32_t page,
                                    const std::vector<std::string>& partitions, std::uint32_t& count)
{
    count = 0;
    const std::lock_guard lock(mutex_);
    const auto found = lists_.find({process, kind});
    if (found == lists_.end()) return errors_.code("not_prepared");
    host::foreign_block block;
    for (const std::string& name : partitions) {
        if (!block) block = host::foreign_block::find(process, name, static_cast<int>(page));
    }
    if (!block) return errors_.code("no_partition");

    const auto& [elements, length] = found->second;
    std::span<char> room = block.bytes();
    for (std::size_t i = std::size_t{page - 1} * length; page != 0 && count < length && i < elements.size(); ++i) {
        if (elements[i].size() > room.size()) return errors_.code("no_partition");
        std::memcpy(room.data(), elements[i].data(), elements[i].size());
        room = room.subspan(elements[i].size());
        ++count;
    }
    return 0;
}

std::uint32_t prepared_lists::finish(int process, const std::string& kind)
{
    const std::lock_guard lock(mutex_);
    return lists_.erase({process, kind}) == 1 ? 0 : errors_.code("not_prepared");
}

void prepared_lists::forget_the_dead()
{
    const std::lock_guard lock(mutex_);
    std::erase_if(lists_, [](const auto& entry) { return !host::alive(entry.first.first); });
}

}  // namespace norvane::simulator
