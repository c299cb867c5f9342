#include "simulator/job.h"

#include "host/partition.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>

namespace norvane::simulator {

namespace wire = protocol::job;

namespace {

constexpr std::size_t most_jobs = wire::get_job_list::reply::field<"ids">::count;
constexpr std::size_t most_addresses = wire::get_address_id::reply::field<"ids">::count;
constexpr std::uint32_t largest_address = 0xFFFF;
constexpr std::size_t state_size = wire::job_state_changed::event::field<"state">::width;

/// The state of a start as an application reads it.
enum start_state : std::uint32_t { not_started = 0, starts = 1, started = 2 };

/// Categories of which the data goes through the same partitions have the same number here; 0 is none.
int memory_of(std::uint32_t category)
{
    if (category == wire::category::scan || category == wire::category::scan_with_ocr) return 1;
    return category == wire::category::stream ? 2 : 0;
}

/// The setting's value in `value`, if it is there and of this kind.
template <typename Value>
std::uint32_t read(const errors& codes, const std::map<std::uint32_t, job_setting>& settings, std::uint32_t setting,
                   Value& value)
{
    const auto found = settings.find(setting);
    if (found == settings.end()) return codes.code("unknown_key");
    const auto* const stored = std::get_if<Value>(&found->second);
    if (stored == nullptr) return codes.code("wrong_kind");
    value = *stored;
    return 0;
}

template <typename Value>
std::uint32_t write(const errors& codes, std::map<std::uint32_t, job_setting>& settings, std::uint32_t setting,
                    Value value)
{
    const auto found = settings.find(setting);
    if (found == settings.end()) return codes.code("unknown_key");
    if (!std::holds_alternative<Value>(found->second)) return codes.code("wrong_kind");
    found->second = std::move(value);
    return 0;
}

}  // namespace

jobs::jobs(const node& device, const environment& shared)
    : codes_(shared.codes),
      records_(shared.records),
      device_(device["job"], shared.records),
      observers_(wire::interface_id, shared.messages),
      prohibition_(device["job"]["prohibition"].number_or(0))
{
    for (const node& entry : device["job"]["basic_values"].elements()) {
        basic_[{entry.at("function").number(), entry.at("setting").number()}] = entry.at("value").number();
    }
    worker_ = std::thread([this] { work(); });
}

jobs::~jobs()
{
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_all();
    worker_.join();
}

template <typename Row, typename Handle>
void jobs::on_job(router& router, Handle handle)
{
    router.on<Row>([this, handle](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto found = jobs_.find(get<"job">(request));
        return found == jobs_.end() ? codes_.code("not_found") : handle(request, reply, found->second);
    });
}

template <typename Row, typename Handle>
void jobs::on_content(router& router, Handle handle)
{
    on_job<Row>(router, [this, handle](const auto& request, auto& reply, record& job) {
        return job.state == job_state::prepared ? handle(request, reply, job.current) : codes_.code("wrong_state");
    });
}

void jobs::serve(router& router)
{
    observers_.serve<wire::add_observer, wire::remove_observer>(router);
    serve_lives(router);
    serve_settings(router);
    serve_addresses(router);
    serve_documents(router);
    serve_data(router);
    serve_machine(router);
}

void jobs::serve_lives(router& router)
{
    router.on<wire::generate_jobinfo>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        std::uint32_t id = 0;
        const auto result = generate(get<"category">(request), request.process(), std::nullopt, id);
        set<"job">(reply, id);
        return result;
    });
    router.on<wire::generate_jobinfo_bkg>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        std::uint32_t id = 0;
        const auto result = generate(get<"category">(request), request.process(), get<"arg">(request), id);
        set<"job">(reply, id);
        return result;
    });
    on_job<wire::delete_jobinfo>(router, [this](const auto& request, auto& reply, record& job) {
        const auto id = get<"job">(request);
        if (!ended(job) && job.state != job_state::prepared) finish(id, job, job_state::cancelled);
        set<"function">(reply, job.category->number);
        set<"del_mem_flg">(reply, releases_memory(job, request.process()) ? wire::memory_released : 0);
        jobs_.erase(id);
        return 0U;
    });
    router.on<wire::start>([this](const auto& request, auto& reply) {
        std::unique_lock lock(mutex_);
        if (prohibition_ != 0) return codes_.code("wrong_state");
        std::uint32_t id = 0;
        record* found = nullptr;
        if (const auto refused =
                find_to_start(get<"category">(request), get<"arg">(request), request.process(), found, id)) {
            return refused;
        }
        set<"job">(reply, id);
        found->state = job_state::starting;
        const auto held = found->category->start_delay;
        lock.unlock();
        std::this_thread::sleep_for(held);
        lock.lock();
        const auto still = jobs_.find(id);
        if (still == jobs_.end()) return codes_.code("not_found");
        record& job = still->second;
        if (job.state != job_state::starting) return codes_.code("wrong_state");
        if (job.category->waits) {
            change(id, job, job_state::waiting);
        } else {
            run(id, job);
        }
        return 0U;
    });
    on_job<wire::kick>(router, [this](const auto& request, auto&, record& job) {
        if (job.state != job_state::waiting) return codes_.code("wrong_state");
        run(get<"job">(request), job);
        return 0U;
    });
    const auto cancel_job = [this](const auto& request, auto&, record& job) {
        return cancel(get<"job">(request), job);
    };
    on_job<wire::cancel>(router, cancel_job);
    on_job<wire::cancel_bkg>(router, cancel_job);
    on_job<wire::continuous_read>(router, [this](const auto& request, auto&, record& job) {
        if (job.state != job_state::next_original) return codes_.code("wrong_state");
        job.scanned = 0;
        job.recognised = 0;
        run(get<"job">(request), job);
        return 0U;
    });
    on_job<wire::continuous_read_end>(router, [this](const auto& request, auto&, record& job) {
        if (job.state != job_state::next_original) return codes_.code("wrong_state");
        finish(get<"job">(request), job, job_state::done);
        return 0U;
    });
    // Nobody kicks a waiting job any more, and no original follows.
    on_job<wire::notify_timeout>(router, [this](const auto& request, auto&, record& job) {
        if (job.state != job_state::waiting && job.state != job_state::next_original) return codes_.code("wrong_state");
        const auto how = job.state == job_state::waiting ? job_state::cancelled : job_state::done;
        finish(get<"job">(request), job, how);
        return 0U;
    });
    router.on<wire::notify_logout_bkg>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        for (auto& [id, job] : jobs_) {
            if (job.user == get<"arg">(request) && !ended(job)) finish(id, job, job_state::cancelled);
        }
        return 0U;
    });
    router.on<wire::get_job_list>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto kind = get<"kind">(request);
        const auto is_kind = [kind](const auto& each) { return each.second.kind == kind; };
        if (kind != device_.all_kinds && std::none_of(device_.categories.begin(), device_.categories.end(), is_kind)) {
            return codes_.code("unknown_key");
        }
        std::uint32_t count = 0;
        for (const auto& [id, job] : jobs_) {
            if (kind == device_.all_kinds || job.category->kind == kind) set<"ids">(reply, count++, id);
        }
        set<"count">(reply, count);
        return 0U;
    });
}

void jobs::serve_settings(router& router)
{
    on_job<wire::get_number>(router, [this](const auto& request, auto& reply, const record& job) {
        std::uint32_t value = 0;
        const auto result = read(codes_, job.current.settings, get<"setting">(request), value);
        set<"value">(reply, value);
        return result;
    });
    on_job<wire::get_text>(router, [this](const auto& request, auto& reply, const record& job) {
        std::string text;
        const auto result = read(codes_, job.current.settings, get<"setting">(request), text);
        set<"text">(reply, text);
        return result;
    });
    on_job<wire::get_phb_numbers>(router, [this](const auto& request, auto& reply, const record& job) {
        const auto found = job.current.phb_settings.find(get<"setting">(request));
        if (found == job.current.phb_settings.end()) return codes_.code("unknown_key");
        set<"a">(reply, found->second[0]);
        set<"b">(reply, found->second[1]);
        set<"c">(reply, found->second[2]);
        return 0U;
    });
    on_content<wire::set_number>(router, [this](const auto& request, auto&, content& job) {
        return write(codes_, job.settings, get<"setting">(request), get<"value">(request));
    });
    on_content<wire::set_text>(router, [this](const auto& request, auto&, content& job) {
        return write(codes_, job.settings, get<"setting">(request), get<"text">(request));
    });
    on_content<wire::set_phb_numbers>(router, [this](const auto& request, auto&, content& job) {
        const auto found = job.phb_settings.find(get<"setting">(request));
        if (found == job.phb_settings.end()) return codes_.code("unknown_key");
        found->second = {get<"a">(request), get<"b">(request), get<"c">(request)};
        return 0U;
    });
    router.on<wire::get_default_jobinfo_val>([this](const auto& request, auto& reply) {
        std::uint32_t value = 0;
        const auto result = read(codes_, device_.settings, get<"setting">(request), value);
        set<"value">(reply, value);
        return result;
    });
    router.on<wire::basic_func_set_value>([this](const auto& request, auto&) {
        const auto function = get<"function">(request);
        const auto is_function = [function](const auto& each) { return each.second.function == function; };
        if (std::none_of(device_.categories.begin(), device_.categories.end(), is_function)) {
            return codes_.code("unknown_key");
        }
        std::uint32_t replaced = 0;
        if (const auto refused = read(codes_, device_.settings, get<"setting">(request), replaced)) return refused;
        const std::lock_guard lock(mutex_);
        basic_[{function, get<"setting">(request)}] = get<"value">(request);
        return 0U;
    });
    on_job<wire::copy_jobinfo>(router, [](const auto&, auto&, record& job) {
        job.kept = job.current;
        return 0U;
    });
    on_job<wire::rollback_jobinfo>(router, [this](const auto&, auto&, record& job) {
        if (job.state != job_state::prepared) return codes_.code("wrong_state");
        if (!job.kept) return codes_.code("not_prepared");
        job.current = *job.kept;
        return 0U;
    });
    on_job<wire::commit_jobinfo>(router, [this](const auto&, auto&, record& job) {
        if (!job.kept) return codes_.code("not_prepared");
        job.kept.reset();
        return 0U;
    });
    on_job<wire::reset_jobinfo>(router, [this](const auto&, auto&, record& job) {
        if (job.state != job_state::prepared) return codes_.code("wrong_state");
        job.current = job.made;
        return 0U;
    });
    on_job<wire::get_disable_info>(router, [this](const auto& request, auto& reply, const record& job) {
        const auto found = device_.disabled.find(get<"item">(request));
        if (found == device_.disabled.end()) return codes_.code("unknown_key");
        set<"value">(reply, job.state == job_state::running ? found->second.running : found->second.idle);
        return 0U;
    });
    on_job<wire::get_start_phb>(router, [](const auto&, auto& reply, const record& job) {
        const auto before = job.state == job_state::starting ? starts : started;
        set<"value">(reply, job.state == job_state::prepared ? not_started : before);
        return 0U;
    });
    on_job<wire::get_main_message>(router, [this](const auto& request, auto& reply, const record& job) {
        set<"message">(reply, message_of(get<"job">(request), job));
        return 0U;
    });
}

void jobs::serve_addresses(router& router)
{
    on_job<wire::add_address>(router, [this](const auto& request, auto& reply, record& job) {
        if (job.state != job_state::prepared) return codes_.code("wrong_state");
        auto& addresses = job.current.addresses;
        if (addresses.size() >= most_addresses) return codes_.code("full");
        // Deleted ids are not given again until all have been used.
        do {
            job.last_address = job.last_address % largest_address + 1;
        } while (addresses.contains(job.last_address));
        addresses[job.last_address] = get<"info">(request);
        set<"addr_id">(reply, job.last_address);
        return 0U;
    });
    on_content<wire::update_address>(router, [this](const auto& request, auto&, content& job) {
        const auto found = job.addresses.find(get<"addr_id">(request));
        if (found == job.addresses.end()) return codes_.code("not_found");
        found->second = get<"info">(request);
        return 0U;
    });
    on_content<wire::delete_address>(router, [this](const auto& request, auto&, content& job) {
        return job.addresses.erase(get<"addr_id">(request)) == 1 ? 0U : codes_.code("not_found");
    });
    on_content<wire::delete_all_address>(router, [](const auto&, auto&, content& job) {
        job.addresses.clear();
        return 0U;
    });
    on_job<wire::get_address>(router, [this](const auto& request, auto& reply, const record& job) {
        const auto found = job.current.addresses.find(get<"addr_id">(request));
        if (found == job.current.addresses.end()) return codes_.code("not_found");
        set<"info">(reply, found->second);
        return 0U;
    });
    on_job<wire::get_address_id>(router, [](const auto&, auto& reply, const record& job) {
        std::uint32_t count = 0;
        for (const auto& [id, info] : job.current.addresses) set<"ids">(reply, count++, id);
        set<"count">(reply, count);
        return 0U;
    });
}

void jobs::serve_documents(router& router)
{
    on_content<wire::box_job_prepare>(router, [this](const auto& request, auto&, content& job) {
        job.documents["box"] = records_.describe("TARN_BOX_JOB_INIT_SETTING", get<"setting">(request));
        return 0U;
    });
    on_content<wire::retrieve_document_prepare>(router, [](const auto& request, auto&, content& job) {
        job.documents["document"] = {{"a", hexadecimal(get<"a">(request))},
                                     {"b", get<"b">(request)},
                                     {"c", get<"c">(request)},
                                     {"d", hexadecimal(get<"d">(request))}};
        return 0U;
    });
    on_content<wire::combine_document>(router, [this](const auto& request, auto&, content& job) {
        job.documents["combined"].push_back(records_.describe("TARN_PHB_COMBINE_DOC_INFO", get<"info">(request)));
        return 0U;
    });
    on_content<wire::direct_print_prepare>(router, [](const auto& request, auto&, content& job) {
        job.documents["direct_print"] = {{"a", hexadecimal(get<"a">(request))}, {"b", hexadecimal(get<"b">(request))}};
        return 0U;
    });
    on_job<wire::direct_print_prepare_stream>(router, [this](const auto& request, auto&, record& job) {
        if (job.category->print_directory.empty()) return codes_.code("wrong_kind");
        if (job.state != job_state::prepared) return codes_.code("wrong_state");
        const auto file = job.category->print_directory / fmt::format("job-{}.prn", get<"job">(request));
        std::error_code failure;
        std::filesystem::create_directories(file.parent_path(), failure);
        if (!std::ofstream(file, std::ios::binary | std::ios::trunc)) return codes_.code("full");
        job.current.documents["stream"] = {{"file", get<"file">(request)}};
        job.printed = file;
        return 0U;
    });
}

void jobs::serve_data(router& router)
{
    on_job<wire::get_scan_data>(router, [this](const auto& request, auto&, record& job) {
        return deliver(request.process(), wire::scan_partition, "TARN_JOB_GET_SCAN_DATA", job, job.category->scan,
                       job.scanned);
    });
    on_job<wire::get_ocr_text_data>(router, [this](const auto& request, auto&, record& job) {
        return deliver(request.process(), wire::ocr_partition, "TARN_JOB_GET_OCR_DATA", job, job.category->ocr,
                       job.recognised);
    });
    on_job<wire::write_stream_data>(router, [this](const auto& request, auto&, record& job) {
        return store(request.process(), get<"job">(request), job);
    });
}

void jobs::serve_machine(router& router)
{
    router.on<wire::set_state_of_prohibition>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        prohibition_ = get<"state">(request);
        return 0U;
    });
    router.on<wire::check_state_of_prohibition>([this](const auto&, auto&) {
        const std::lock_guard lock(mutex_);
        return prohibition_;
    });
    router.on<wire::notify_energy_saving_mode>([this](const auto& request, auto& reply) {
        const auto found = device_.energy_saving.find(get<"state">(request));
        if (found == device_.energy_saving.end()) return codes_.code("unknown_key");
        set<"value">(reply, found->second);
        return 0U;
    });
    router.on<wire::check_app_stop_permission_to_change_state>([this](const auto& request, auto&) {
        const auto found = device_.applications.find(get<"name">(request));
        return found == device_.applications.end() ? codes_.code("not_found") : found->second;
    });
    router.on<wire::notify_finish_app_state_change_judgement>([this](const auto& request, auto&) {
        const auto name = get<"name">(request);
        if (!device_.applications.contains(name)) return codes_.code("not_found");
        const std::lock_guard lock(mutex_);
        std::erase(judged_, name);
        judged_.push_back(name);
        return 0U;
    });
}

std::uint32_t jobs::generate(std::uint32_t category, int process, std::optional<std::uint32_t> user, std::uint32_t& id)
{
    const auto known = device_.categories.find(category);
    if (known == device_.categories.end()) return codes_.code("unknown_key");
    if (jobs_.size() >= most_jobs) return codes_.code("full");
    content made{known->second.settings, device_.phb_settings, {}};
    for (const auto& [which, value] : basic_) {
        if (which.first == known->second.function) made.settings[which.second] = value;
    }
    id = ++last_job_;
    record fresh{&known->second, process, std::move(made)};
    fresh.user = user;
    jobs_.emplace(id, std::move(fresh));
    return 0;
}

std::uint32_t jobs::find_to_start(std::uint32_t category, std::uint32_t id, int process, record*& found,
                                  std::uint32_t& found_id)
{
    for (auto each = jobs_.rbegin(); each != jobs_.rend() && found == nullptr; ++each) {
        record& job = each->second;
        const bool newest =
            job.process == process && job.state == job_state::prepared && job.category->start_as == category;
        if (id == 0 ? newest : each->first == id) {
            found = &job;
            found_id = each->first;
        }
    }
    if (found == nullptr) return codes_.code("not_found");
    if (found->category->start_as != category) return codes_.code("wrong_kind");
    return found->state == job_state::prepared ? 0 : codes_.code("wrong_state");
}

bool jobs::releases_memory(const record& deleted, int process) const
{
    const int memory = memory_of(deleted.category->number);
    return memory != 0 && deleted.process == process && std::none_of(jobs_.begin(), jobs_.end(), [&](const auto& each) {
               const record& other = each.second;
               return &other != &deleted && other.process == process && memory_of(other.category->number) == memory;
           });
}

bool jobs::ended(const record& job) const { return job.state == job_state::done || job.state == job_state::cancelled; }

std::vector<char> jobs::message_of(std::uint32_t id, const record& job) const
{
    std::vector<char> message = device_.messages.at(job.state);
    records_.set("TARN_PHB_GET_MESSAGE", message, "job", id);
    return message;
}

template <typename Row>
void jobs::tell(const event_of<Row>& event)
{
    untold_.push_back({Row::id, {event.record().begin(), event.record().end()}});
    changed_.notify_one();
}

void jobs::change(std::uint32_t id, record& job, job_state state)
{
    job.state = state;
    std::vector<char> described(state_size, '\0');
    records_.set("TARN_JOB_STATE", described, "job", id);
    records_.set("TARN_JOB_STATE", described, "state", device_.states.at(state));
    records_.set("TARN_JOB_STATE", described, "category", job.category->number);
    records_.set("TARN_JOB_STATE", described, "pages", job.pages);
    tell(event_of<wire::job_state_changed>().set<"state">(described));
    tell(event_of<wire::main_message>().set<"value">(id));
}

void jobs::run(std::uint32_t id, record& job)
{
    change(id, job, job_state::running);
    tell(event_of<wire::start_phb>().set<"value">(id));
    tell(event_of<wire::disable_info>().set<"value">(id));
    std::vector<char> info = device_.phb_info;
    records_.set("TARN_PHB_INFO", info, "job", id);
    tell(event_of<wire::phb_info>().set<"value">(id).set<"info">(info));
    // A stream's job ends with its stream.
    if (job.printed.empty()) job.due = clock::now() + job.category->page_time;
}

void jobs::finish(std::uint32_t id, record& job, job_state how)
{
    job.due.reset();
    change(id, job, how);
    tell(event_of<wire::disable_info>().set<"value">(id));
    tell(event_of<wire::message_info>().set<"value">(id).set<"message">(message_of(id, job)));
}

void jobs::read_page(std::uint32_t id, record& job)
{
    const std::uint32_t originals_pages = job.category->pages;
    if (originals_pages != 0) tell(event_of<wire::scan_count>().set<"a">(id).set<"b">(++job.pages));
    if (originals_pages != 0 && job.pages % originals_pages != 0) {
        *job.due += job.category->page_time;
    } else if (job.category->continuous) {
        job.due.reset();
        change(id, job, job_state::next_original);
    } else {
        finish(id, job, job_state::done);
    }
}

std::uint32_t jobs::cancel(std::uint32_t id, record& job)
{
    if (ended(job)) return codes_.code("wrong_state");
    finish(id, job, job_state::cancelled);
    return 0;
}

std::uint32_t jobs::deliver(int process, const protocol::job::partition& where, const std::string& type,
                            const record& job, const std::vector<char>& data, std::size_t& position) const
{
    const layout_field* const piece = records_.find(type, "data");
    const bool runs = job.state == job_state::running || job.state == job_state::next_original;
    if (!runs && job.state != job_state::done) return codes_.code("wrong_state");
    if (data.empty() || piece == nullptr) return codes_.code("wrong_kind");
    const auto block = host::foreign_block::find(process, where.name, where.block_id);
    if (block.bytes().size() < where.block_size) return codes_.code("no_partition");
    const std::span<char> room = block.bytes().first(where.block_size);

    const auto rest = std::span(data).subspan(position);
    const auto now = rest.first(std::min(rest.size(), piece->size));
    std::fill(room.begin(), room.end(), '\0');
    std::copy(now.begin(), now.end(), room.subspan(piece->offset).begin());
    position += now.size();
    records_.set(type, room, "length", static_cast<std::uint32_t>(now.size()));
    records_.set(type, room, "last", position == data.size() ? 1 : 0);
    return 0;
}

std::uint32_t jobs::store(int process, std::uint32_t id, record& job)
{
    const std::string type = "TARN_JOB_WRITE_STREAM_DATA";
    const layout_field* const piece = records_.find(type, "data");
    if (job.printed.empty() || piece == nullptr) return codes_.code("not_prepared");
    if (job.state != job_state::prepared && job.state != job_state::running) return codes_.code("wrong_state");
    const auto& where = wire::stream_partition;
    const auto block = host::foreign_block::find(process, where.name, where.block_id);
    if (block.bytes().size() < where.block_size) return codes_.code("no_partition");

    const std::size_t length = records_.number(type, block.bytes(), "length");
    if (length > piece->size) return codes_.code("bad_length");
    const auto data = block.bytes().subspan(piece->offset, length);
    std::ofstream stream(job.printed, std::ios::binary | std::ios::app);
    stream.write(data.data(), static_cast<std::streamsize>(data.size()));
    if (!stream.flush()) return codes_.code("full");
    if (job.state == job_state::prepared) run(id, job);
    if (records_.number(type, block.bytes(), "last") != 0) finish(id, job, job_state::done);
    return 0;
}

std::optional<jobs::clock::time_point> jobs::go_on()
{
    const auto now = clock::now();
    std::optional<clock::time_point> next;
    for (auto& [id, job] : jobs_) {
        if (job.due && *job.due <= now) read_page(id, job);
        if (job.due && (!next || *job.due < *next)) next = job.due;
    }
    return next;
}

void jobs::work()
{
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        const auto next = go_on();
        if (!untold_.empty()) {
            const news first = std::move(untold_.front());
            untold_.pop_front();
            lock.unlock();
            observers_.notify(first.id, first.record);
            lock.lock();
        } else if (next) {
            changed_.wait_until(lock, *next);
        } else {
            changed_.wait(lock);
        }
    }
}

void jobs::save(json& device) const
{
    json& own = device["job"];
    const std::lock_guard lock(mutex_);
    own["prohibition"] = prohibition_;
    own["basic_values"] = json::array();
    for (const auto& [which, value] : basic_) {
        own["basic_values"].push_back({{"function", which.first}, {"setting", which.second}, {"value", value}});
    }
    device_.save(own);
}

json jobs::state() const
{
    const std::lock_guard lock(mutex_);
    json all = json::array();
    for (const auto& [id, job] : jobs_) {
        all.push_back({{"job", id},
                       {"category", job.category->number},
                       {"process", job.process},
                       {"state", device_.states.at(job.state)},
                       {"pages", job.pages},
                       {"addresses", job.current.addresses.size()},
                       {"documents", job.current.documents}});
    }
    return {{"jobs", std::move(all)}, {"judged", judged_}};
}

}  // namespace norvane::simulator
