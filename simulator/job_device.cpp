#include "simulator/job_device.h"

#include "protocol/job.h"

#include <fstream>
#include <iterator>

namespace norvane::simulator {

namespace wire = protocol::job;

namespace {

constexpr std::array<std::pair<const char*, job_state>, 7> state_names = {{{"prepared", job_state::prepared},
                                                                           {"starting", job_state::starting},
                                                                           {"waiting", job_state::waiting},
                                                                           {"running", job_state::running},
                                                                           {"next_original", job_state::next_original},
                                                                           {"done", job_state::done},
                                                                           {"cancelled", job_state::cancelled}}};

constexpr std::size_t message_size = wire::get_main_message::reply::field<"message">::width;

job_setting setting_of(const node& entry)
{
    const node value = entry.at("value");
    if (value.is_text()) return value.text();
    return value.number();
}

job_state state_of(const std::string& name, const node& value)
{
    for (const auto& [known, state] : state_names) {
        if (name == known) return state;
    }
    value.fail("the name of a state: prepared, starting, waiting, running, next_original, done or cancelled");
}

std::vector<char> content_of(const node& named)
{
    std::ifstream stream(named.file(), std::ios::binary);
    if (!stream) named.fail("a file that can be read");
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Refuses a member whose data could not be divided into the pieces of its block.
void check_layout(const node& member, const layouts& records, const std::string& type, std::size_t size)
{
    const layout_field* const data = records.find(type, "data");
    const layout_field* const length = records.find(type, "length");
    if (data == nullptr || data->what != layout_field::form::bytes || data->offset + data->size > size ||
        length == nullptr || length->what != layout_field::form::number || length->offset + length->size > size) {
        member.fail("a layout of " + type + R"( with a number "length" and bytes "data" inside its )" +
                    std::to_string(size) + " bytes");
    }
}

}  // namespace

job_device::job_device(const node& own, const layouts& records) : all_kinds(own["all_kinds"].number_or(0))
{
    for (const node& entry : own["settings"].elements()) settings[entry.at("setting").number()] = setting_of(entry);
    for (const node& entry : own["phb_settings"].elements()) {
        phb_settings[entry.at("setting").number()] = {entry.at("a").number(), entry.at("b").number(),
                                                      entry.at("c").number()};
    }
    std::size_t index = 0;
    for (const node& entry : own["categories"].elements()) read_category(entry, index++, records);
    for (const node& entry : own["disable_info"].elements()) {
        disabled[entry.at("item").number()] = {entry.at("value").number(), entry.at("running").number()};
    }
    for (const node& entry : own["energy_saving"].elements()) {
        energy_saving[entry.at("state").number()] = entry.at("answer").number();
    }
    for (const node& entry : own["applications"].elements()) {
        applications[entry.at("name").text()] = entry.at("stop_permission").number();
    }
    for (const auto& [name, state] : state_names) states[state] = static_cast<std::uint32_t>(state);
    for (const auto& [name, value] : own["states"].members()) states[state_of(name, value)] = value.number();
    for (const auto& [name, state] : state_names) messages[state].assign(message_size, '\0');
    for (const auto& [name, value] : own["messages"].members()) {
        messages[state_of(name, value)] = records.fill("TARN_PHB_GET_MESSAGE", message_size, value);
    }
    phb_info = records.fill("TARN_PHB_INFO", open_ended_record, own["phb_info"]);
}

void job_device::read_category(const node& entry, std::size_t index, const layouts& records)
{
    job_category made{};
    made.number = entry.at("category").number();
    made.start_as = entry.at("start_as").number();
    made.kind = entry.at("kind").number();
    made.function = entry["function"].number_or(0);
    made.pages = entry["pages"].number_or(0);
    made.page_time = std::chrono::milliseconds(entry["page_ms"].number_or(0));
    made.start_delay = std::chrono::milliseconds(entry["start_delay_ms"].number_or(0));
    made.waits = entry["waits"].flag_or(false);
    made.continuous = entry["continuous"].flag_or(false);
    made.settings = settings;
    for (const node& each : entry["settings"].elements()) {
        const node number = each.at("setting");
        const auto known = made.settings.find(number.number());
        if (known == made.settings.end()) number.fail("one of the settings of all jobs");
        job_setting value = setting_of(each);
        if (value.index() != known->second.index()) each.at("value").fail("a value of the setting's kind");
        known->second = std::move(value);
    }
    const std::string prefix = "/categories/" + std::to_string(index) + "/";
    if (const node scan = entry["scan_file"]) {
        check_layout(scan, records, "TARN_JOB_GET_SCAN_DATA", wire::scan_partition.block_size);
        made.scan = content_of(scan);
        files_[prefix + "scan_file"] = scan.file();
    }
    if (const node ocr = entry["ocr_file"]) {
        check_layout(ocr, records, "TARN_JOB_GET_OCR_DATA", wire::ocr_partition.block_size);
        made.ocr = content_of(ocr);
        files_[prefix + "ocr_file"] = ocr.file();
    }
    if (const node directory = entry["print_directory"]) {
        check_layout(directory, records, "TARN_JOB_WRITE_STREAM_DATA", wire::stream_partition.block_size);
        made.print_directory = directory.file();
        files_[prefix + "print_directory"] = directory.file();
    }
    if (!categories.emplace(made.number, std::move(made)).second) entry.fail("a category that is not there yet");
}

void job_device::save(json& own) const
{
    for (const auto& [pointer, file] : files_) {
        own[json::json_pointer(pointer)] = std::filesystem::absolute(file).string();
    }
}

}  // namespace norvane::simulator
