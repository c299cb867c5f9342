#include "simulator/pages.h"

#include "host/partition.h"
#include "host/service.h"

#include <algorithm>
#include <cstring>

namespace norvane::simulator {

std::uint32_t prepared_lists::prepare(int process, const list_kind& kind, std::vector<element> elements,
                                      std::uint32_t page_length, std::uint32_t capacity)
{
    const std::uint32_t length = page_length == 0 ? capacity : std::min(page_length, capacity);
    const auto pages = static_cast<std::uint32_t>((elements.size() + length - 1) / length);
    const std::lock_guard lock(mutex_);
    open_lists& open = open_[{process, kind.finished_as}];
    open.by_name[kind.name] = {std::move(elements), length};
    ++open.prepared;
    return pages;
}

std::uint32_t prepared_lists::write(int process, const list_kind& kind, std::uint32_t page,
                                    const std::vector<std::string>& partitions, std::uint32_t& count,
                                    const selection& wanted)
{
    count = 0;
    const std::lock_guard lock(mutex_);
    const auto open = open_.find({process, kind.finished_as});
    if (open == open_.end()) return errors_.code("not_prepared");
    const auto found = open->second.by_name.find(kind.name);
    if (found == open->second.by_name.end()) return errors_.code("not_prepared");
    host::foreign_block block;
    for (const std::string& name : partitions) {
        if (!block) block = host::foreign_block::find(process, name, static_cast<int>(page));
    }
    if (!block) return errors_.code("no_partition");
    if (page == 0) return 0;

    const auto& [elements, length] = found->second;
    std::span<char> room = block.bytes();
    std::size_t before = std::size_t{page - 1} * length;
    for (const element& each : elements) {
        if (count == length) break;
        if (wanted && !wanted(each)) continue;
        if (before > 0) {
            --before;
            continue;
        }
        if (each.size() > room.size()) return errors_.code("no_partition");
        std::memcpy(room.data(), each.data(), each.size());
        room = room.subspan(each.size());
        ++count;
    }
    return 0;
}

std::uint32_t prepared_lists::finish(int process, const list_kind& kind)
{
    const std::lock_guard lock(mutex_);
    const auto open = open_.find({process, kind.finished_as});
    if (open == open_.end()) return errors_.code("not_prepared");
    if (--open->second.prepared == 0) open_.erase(open);
    return 0;
}

void prepared_lists::forget_the_dead()
{
    const std::lock_guard lock(mutex_);
    std::erase_if(open_, [](const auto& entry) { return !host::alive(entry.first.first); });
}

}  // namespace norvane::simulator
