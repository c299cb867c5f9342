#include "tarn_job_facade.h"

#include "frame/call.h"
#include "frame/facade.h"
#include "frame/observer_registration.h"
#include "frame/partition.h"
#include "protocol/job.h"
#include "tarn_job_observer.h"

#include <algorithm>
#include <atomic>
#include <cstring>

namespace norvane {

using frame::call;
using frame::into;
using frame::trace_error;
using frame::with;

namespace wire = protocol::job;

namespace {

constexpr const char* source = "core_src/tarn_job_facade";
constexpr unsigned int partition_failure = 0x04010001;
constexpr unsigned int null_observer_failure = 0x04010008;

constexpr frame::service service{
    .interface_id = wire::interface_id,
    .source = source,
    .failure = 0x04010007,
    .failure_line = 256,
    .client = frame::unreached_client::kept,
};

void* peek(void*& shared) { return std::atomic_ref(shared).load(std::memory_order_acquire); }
void publish(void*& shared, void* value) { std::atomic_ref(shared).store(value, std::memory_order_release); }

template <frame::fixed_text Operation>
void trace_platform_failure(const char* platform_call, unsigned int code)
{
    trace_error({source, Operation.chars, __LINE__}, "[Error: %s(),ret=0x%08x]", platform_call, code);
}

/// Whether the operation itself traces that a partition could not be created.
enum class failed_creation { untraced, traced };

struct readiness {
    unsigned int result;
    /// The partition is there, but gave no block.
    bool block_refused;
};

/// Makes a partition and its block ready on behalf of `operation`: each is created unless it is there
/// already.
readiness make_ready(tarn_job_facade& facade, const wire::partition& which, void*& part_id, void*& block,
                     const char* operation, failed_creation creation)
{
    // The name is only read.
    unsigned int result = facade.create_shared_memory(which.block_size, const_cast<char*>(which.name), part_id);
    if (result != 0) {
        if (creation == failed_creation::traced) {
            trace_error({source, operation, __LINE__}, "[Error:ret=0x%08x]", result);
        }
        return {result, false};
    }
    if (peek(block) != nullptr) {
        trace_error({source, operation, __LINE__}, "[already allocated.]");
        return {0, false};
    }
    void* taken = nullptr;
    result = facade.alloc_shared_memory(which.block_id, &taken, which.block_size, part_id);
    if (result != 0) {
        trace_error({source, operation, __LINE__}, "[Error: alloc_shared_memory(),rc=0x%08x]", result);
        return {result, true};
    }
    publish(block, taken);
    return {0, false};
}

/// Asks the service to fill the block, and copies it to `data`. The service is asked even without one.
template <typename Row, typename Data>
unsigned int fetch(bmc_mc_client* client, unsigned int job, void*& shared_block, Data& data)
{
    const unsigned int result = call<Row>(client, with(job));
    const void* const block = peek(shared_block);
    if (block == nullptr) {
        trace_error({source, Row::label, __LINE__}, "[Error: shared_mem is null.]");
        return partition_failure;
    }
    std::memcpy(&data, block, sizeof data);
    return result;
}

static_assert(sizeof(TARN_JOB_GET_SCAN_DATA) == wire::scan_partition.block_size);
static_assert(sizeof(TARN_JOB_GET_OCR_DATA) == wire::ocr_partition.block_size);
static_assert(sizeof(TARN_JOB_WRITE_STREAM_DATA) == wire::stream_partition.block_size);

/// Adds the first `count` numbers of the reply's array behind those that `ids` holds.
template <typename Row>
void append_ids(const frame::exchange<Row>& message, std::size_t count, std::vector<unsigned int>& ids)
{
    for (std::size_t i = 0; i < count; ++i) ids.push_back(message.template number<"ids">(i));
}

/// The reply's count, which the array it counts limits.
template <typename Row>
unsigned int counted(const frame::exchange<Row>& message)
{
    constexpr unsigned int capacity = Row::reply::template field<"ids">::count;
    return std::min(message.template number<"count">(), capacity);
}

}  // namespace

tarn_job_facade* tarn_job_facade::s_the_instance_ = nullptr;
OSW_Mutex_Semaphore* tarn_job_facade::mtx_ = nullptr;
bmc_mc_client* tarn_job_facade::s_the_client_ = nullptr;

tarn_job_facade::tarn_job_facade() : job_mutex_(1), shm_mutex_(1) {}
tarn_job_facade::~tarn_job_facade() = default;

long tarn_job_facade::dispatch(long, char*, unsigned int, gen_ipc_msghdr) { return 0; }

tarn_job_facade* tarn_job_facade::tarn_job_get_instance()
{
    return frame::instance(s_the_instance_, mtx_, [] {
        auto* const facade = new tarn_job_facade;
        facade->initialize_facade(facade);
        return facade;
    });
}

unsigned int tarn_job_facade::initialize_facade(tarn_job_facade*) { return frame::initialize(service, s_the_client_); }

unsigned int tarn_job_facade::tarn_job_add_observer(tarn_job_observer* obs)
{
    return frame::add_observer<wire::add_observer>(s_the_client_, obs, &tarn_job_observer::connection_name_,
                                                   {null_observer_failure, source, __LINE__});
}

unsigned int tarn_job_facade::tarn_job_remove_observer(tarn_job_observer* obs)
{
    return frame::remove_observer<wire::remove_observer>(s_the_client_, obs, {null_observer_failure, source, __LINE__});
}

unsigned int tarn_job_facade::tarn_job_generate_jobinfo(TARN_JOB_PHB_CATEGORY category, unsigned int& job)
{
    using row = wire::generate_jobinfo;
    const unsigned int result = call<row>(s_the_client_, with(category), into(job));
    return result == 0 ? make_job_blocks_ready(category, row::label) : result;
}

unsigned int tarn_job_facade::tarn_job_generate_jobinfo_bkg(TARN_JOB_PHB_CATEGORY category, unsigned long arg,
                                                            unsigned int& job)
{
    using row = wire::generate_jobinfo_bkg;
    const unsigned int result = call<row>(s_the_client_, with(category, arg), into(job));
    return result == 0 ? make_job_blocks_ready(category, row::label) : result;
}

unsigned int tarn_job_facade::make_job_blocks_ready(unsigned int category, const char* operation)
{
    if (category != wire::category::scan && category != wire::category::scan_with_ocr) return 0;
    const readiness scan = make_ready(*this, wire::scan_partition, job_part_id_, shared_mem_scan_data_, operation,
                                      failed_creation::untraced);
    if (category == wire::category::scan || scan.block_refused) return scan.result;
    return make_ready(*this, wire::ocr_partition, job_ocr_part_id_, shared_mem_ocr_data_, operation,
                      failed_creation::traced)
        .result;
}

unsigned int tarn_job_facade::tarn_job_delete_jobinfo(unsigned int job)
{
    const OSW_Guard lock(job_mutex_);
    unsigned int released = 0;
    unsigned int function = 0;
    unsigned int result = call<wire::delete_jobinfo>(s_the_client_, with(job), into(released, function));
    if (released != wire::memory_released) return result;

    const auto delete_if_there = [this, &result](void*& part_id) {
        if (peek(part_id) != nullptr) result = delete_shared_memory(part_id);
    };
    // The blocks go with their partitions.
    if (function == wire::category::scan || function == wire::category::scan_with_ocr) {
        publish(shared_mem_scan_data_, nullptr);
        publish(shared_mem_ocr_data_, nullptr);
        delete_if_there(job_part_id_);
        delete_if_there(job_ocr_part_id_);
    } else if (function == wire::category::stream) {
        publish(shared_mem_stream_data_, nullptr);
        delete_if_there(job_stm_part_id_);
    }
    return result;
}

unsigned int tarn_job_facade::tarn_job_start(TARN_JOB_CATEGORY category, unsigned int arg, unsigned int& job)
{
    const OSW_Guard lock(job_mutex_);
    return call<wire::start>(s_the_client_, with(category, arg), into(job));
}

unsigned int tarn_job_facade::tarn_job_cancel(unsigned int job, unsigned long arg)
{
    return call<wire::cancel>(s_the_client_, with(job, arg));
}

unsigned int tarn_job_facade::tarn_job_continuous_read(unsigned int job)
{
    return call<wire::continuous_read>(s_the_client_, with(job));
}

unsigned int tarn_job_facade::tarn_job_continuous_read_end(unsigned int job)
{
    return call<wire::continuous_read_end>(s_the_client_, with(job));
}

unsigned int tarn_job_facade::tarn_job_get_value(unsigned int job, TARN_JOB_SETTING s, unsigned int& v)
{
    return call<wire::get_number>(s_the_client_, with(job, s), into(v));
}

unsigned int tarn_job_facade::tarn_job_get_value(unsigned int job, TARN_JOB_SETTING s, std::string& v)
{
    return call<wire::get_text>(s_the_client_, with(job, s), into(v));
}

unsigned int tarn_job_facade::tarn_job_get_value(unsigned int job, TARN_PHB_SETTING_ID id, unsigned int& a,
                                                 unsigned int& b, unsigned int& c)
{
    return call<wire::get_phb_numbers>(s_the_client_, with(job, id), into(a, b, c));
}

unsigned int tarn_job_facade::tarn_job_set_value(unsigned int job, TARN_JOB_SETTING s, unsigned int v)
{
    const OSW_Guard lock(job_mutex_);
    return call<wire::set_number>(s_the_client_, with(job, s, v));
}

unsigned int tarn_job_facade::tarn_job_set_value(unsigned int job, TARN_JOB_SETTING s, std::string v)
{
    const OSW_Guard lock(job_mutex_);
    return call<wire::set_text>(s_the_client_, with(job, s, std::string_view(v)));
}

unsigned int tarn_job_facade::tarn_job_set_value(unsigned int job, TARN_PHB_SETTING_ID id, unsigned int a,
                                                 unsigned int b, unsigned int c)
{
    const OSW_Guard lock(job_mutex_);
    return call<wire::set_phb_numbers>(s_the_client_, with(job, id, a, b, c));
}

unsigned int tarn_job_facade::tarn_job_set_state_of_prohibition(TARN_STATE_OF_PROHIBITION st)
{
    return call<wire::set_state_of_prohibition>(s_the_client_, with(st));
}

unsigned int tarn_job_facade::tarn_job_copy_jobinfo(unsigned int job)
{
    return call<wire::copy_jobinfo>(s_the_client_, with(job));
}

unsigned int tarn_job_facade::tarn_job_rollback_jobinfo(unsigned int job)
{
    return call<wire::rollback_jobinfo>(s_the_client_, with(job));
}

unsigned int tarn_job_facade::tarn_job_commit_jobinfo(unsigned int job)
{
    return call<wire::commit_jobinfo>(s_the_client_, with(job));
}

unsigned int tarn_job_facade::tarn_job_get_disable_info(unsigned int job, TARN_PHB_DISABLE_ITEM item, unsigned short& v)
{
    return call<wire::get_disable_info>(s_the_client_, with(job, item), into(v));
}

unsigned int tarn_job_facade::tarn_job_get_start_phb(unsigned int job, int& v)
{
    return call<wire::get_start_phb>(s_the_client_, with(job), into(v));
}

unsigned int tarn_job_facade::tarn_job_get_main_message(unsigned int job, TARN_PHB_GET_MESSAGE& m)
{
    return call<wire::get_main_message>(s_the_client_, with(job), into(m));
}

unsigned int tarn_job_facade::tarn_job_check_state_of_prohibition()
{
    return call<wire::check_state_of_prohibition>(s_the_client_);
}

unsigned int tarn_job_facade::tarn_job_kick(unsigned int job)
{
    const OSW_Guard lock(job_mutex_);
    return call<wire::kick>(s_the_client_, with(job));
}

unsigned int tarn_job_facade::tarn_job_notify_energy_saving_mode(TARN_JOB_ENERGY_SAVING_STATE st, int& v)
{
    return call<wire::notify_energy_saving_mode>(s_the_client_, with(st), into(v));
}

unsigned int tarn_job_facade::tarn_job_add_address(unsigned int job, unsigned int& addr_id,
                                                   const TARN_JOB_SEND_INFO& info)
{
    const OSW_Guard lock(job_mutex_);
    return call<wire::add_address>(s_the_client_, with(job, info), into(addr_id));
}

unsigned int tarn_job_facade::tarn_job_update_address(unsigned int job, unsigned int addr_id,
                                                      const TARN_JOB_SEND_INFO& info)
{
    const OSW_Guard lock(job_mutex_);
    return call<wire::update_address>(s_the_client_, with(job, addr_id, info));
}

unsigned int tarn_job_facade::tarn_job_delete_address(unsigned int job, unsigned int addr_id)
{
    const OSW_Guard lock(job_mutex_);
    return call<wire::delete_address>(s_the_client_, with(job, addr_id));
}

unsigned int tarn_job_facade::tarn_job_delete_all_address(unsigned int job)
{
    const OSW_Guard lock(job_mutex_);
    return call<wire::delete_all_address>(s_the_client_, with(job));
}

unsigned int tarn_job_facade::tarn_job_get_address(unsigned int job, unsigned int addr_id, TARN_JOB_SEND_INFO& info)
{
    const OSW_Guard lock(job_mutex_);
    return call<wire::get_address>(s_the_client_, with(job, addr_id), into(info));
}

unsigned int tarn_job_facade::tarn_job_get_address_id(unsigned int job, unsigned int& count,
                                                      std::vector<unsigned int>& ids)
{
    const OSW_Guard lock(job_mutex_);
    frame::exchange<wire::get_address_id> message;
    message.put(with(job));
    message.send(s_the_client_);
    count = counted(message);
    append_ids(message, count, ids);
    return message.result();
}

unsigned int tarn_job_facade::tarn_job_reset_jobinfo(unsigned int job)
{
    const OSW_Guard lock(job_mutex_);
    return call<wire::reset_jobinfo>(s_the_client_, with(job));
}

unsigned int tarn_job_facade::tarn_job_get_job_list(TARN_JOB_KIND kind, std::vector<unsigned int>& ids)
{
    frame::exchange<wire::get_job_list> message;
    message.put(with(kind));
    message.send(s_the_client_);
    append_ids(message, counted(message), ids);
    return message.result();
}

unsigned int tarn_job_facade::tarn_job_get_default_jobinfo_val(TARN_JOB_SETTING s, unsigned int& v)
{
    return call<wire::get_default_jobinfo_val>(s_the_client_, with(s), into(v));
}

unsigned int tarn_job_facade::tarn_job_box_job_prepare(unsigned int job, TARN_BOX_JOB_INIT_SETTING& s)
{
    const OSW_Guard lock(job_mutex_);
    return call<wire::box_job_prepare>(s_the_client_, with(job, s));
}

unsigned int tarn_job_facade::tarn_job_retrieve_document_prepare(unsigned int job, char* a, unsigned long b,
                                                                 unsigned long c, char* d)
{
    return call<wire::retrieve_document_prepare>(s_the_client_, with(job, a, b, c, d));
}

unsigned int tarn_job_facade::tarn_job_combine_document(unsigned int job, TARN_PHB_COMBINE_DOC_INFO& info)
{
    return call<wire::combine_document>(s_the_client_, with(job, info));
}

unsigned int tarn_job_facade::tarn_job_direct_print_prepare(unsigned int job, char* a, char* b)
{
    return call<wire::direct_print_prepare>(s_the_client_, with(job, a, b));
}

unsigned int tarn_job_facade::tarn_job_basic_func_set_value(TARN_JOB_FUNC_TYPE f, TARN_JOB_SETTING s, unsigned int v)
{
    return call<wire::basic_func_set_value>(s_the_client_, with(f, s, v));
}

unsigned int tarn_job_facade::tarn_job_get_scan_data(unsigned int job, TARN_JOB_GET_SCAN_DATA& d)
{
    const OSW_Guard lock(shm_mutex_);
    return fetch<wire::get_scan_data>(s_the_client_, job, shared_mem_scan_data_, d);
}

unsigned int tarn_job_facade::tarn_job_notify_timeout(unsigned int job)
{
    return call<wire::notify_timeout>(s_the_client_, with(job));
}

unsigned int tarn_job_facade::tarn_job_direct_print_prepare(unsigned int job, TARN_JOB_STREAM_WRITE_FILE w)
{
    using row = wire::direct_print_prepare_stream;
    const unsigned int result = call<row>(s_the_client_, with(job, w));
    if (result != 0) return result;
    return make_ready(*this, wire::stream_partition, job_stm_part_id_, shared_mem_stream_data_, row::label,
                      failed_creation::traced)
        .result;
}

unsigned int tarn_job_facade::tarn_job_write_stream_data(unsigned int job, TARN_JOB_WRITE_STREAM_DATA& d)
{
    using row = wire::write_stream_data;
    const OSW_Guard lock(shm_mutex_);
    if (void* const block = peek(shared_mem_stream_data_)) {
        std::memcpy(block, &d, sizeof d);
    } else {
        trace_error({source, row::label, __LINE__}, "[Error: shared_mem_stream_data_ is null.]");
    }
    return call<row>(s_the_client_, with(job));
}

unsigned int tarn_job_facade::tarn_job_get_ocr_text_data(unsigned int job, TARN_JOB_GET_OCR_DATA& d)
{
    const OSW_Guard lock(shm_mutex_);
    return fetch<wire::get_ocr_text_data>(s_the_client_, job, shared_mem_ocr_data_, d);
}

unsigned int tarn_job_facade::tarn_job_cancel_bkg(unsigned int job, unsigned long arg)
{
    return call<wire::cancel_bkg>(s_the_client_, with(job, arg));
}

unsigned int tarn_job_facade::tarn_job_notify_logout_bkg(unsigned long arg)
{
    const OSW_Guard lock(job_mutex_);
    return call<wire::notify_logout_bkg>(s_the_client_, with(arg));
}

unsigned int tarn_job_facade::tarn_job_check_app_stop_permission_to_change_state(const char* name)
{
    return call<wire::check_app_stop_permission_to_change_state>(s_the_client_, with(name));
}

unsigned int tarn_job_facade::tarn_job_notify_finish_app_state_change_judgement(const char* name)
{
    return call<wire::notify_finish_app_state_change_judgement>(s_the_client_, with(name));
}

unsigned int tarn_job_facade::tarn_job_panel_resource_response(TARN_PANEL_RESULT, TARN_PANEL_RESOURCE_KIND,
                                                               TARN_PANEL_RESOURCE_REQUEST)
{
    return 0;
}

unsigned int tarn_job_facade::create_shared_memory(unsigned long size, char* name, void*& part_id)
{
    const OSW_Guard lock(shm_mutex_);
    if (peek(part_id) != nullptr) {
        trace_error({source, "create_shared_memory", __LINE__}, "[partition exist.]");
        return 0;
    }
    void* made = nullptr;
    if (!frame::create_partition(made, name, size, trace_platform_failure<"create_shared_memory">)) {
        return partition_failure;
    }
    publish(part_id, made);
    return 0;
}

unsigned int tarn_job_facade::alloc_shared_memory(int blk_id, void** block, unsigned long size, void*& part_id)
{
    const bool taken = frame::take_block(peek(part_id), blk_id, block, size, frame::found_block::kept,
                                         trace_platform_failure<"alloc_shared_memory">);
    return taken ? 0 : partition_failure;
}

unsigned int tarn_job_facade::free_shared_memory(void* block, void*& part_id)
{
    const bool freed = frame::free_block(peek(part_id), block, trace_platform_failure<"free_shared_memory">);
    return freed ? 0 : partition_failure;
}

unsigned int tarn_job_facade::delete_shared_memory(void*& part_id)
{
    const OSW_Guard lock(shm_mutex_);
    frame::delete_partition(peek(part_id), trace_platform_failure<"delete_shared_memory">);
    publish(part_id, nullptr);
    return 0;
}

}  // namespace norvane
