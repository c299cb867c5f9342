#include "tarn_common_facade.h"

#include "frame/call.h"
#include "frame/facade.h"
#include "frame/observer_registration.h"
#include "frame/paged_list.h"
#include "frame/partition.h"
#include "protocol/common.h"
#include "tarn_common_observer.h"

namespace norvane {

using frame::call;
using frame::into;
using frame::with;

namespace wire = protocol::common;

namespace {

constexpr frame::service service{
    .interface_id = wire::interface_id,
    .source = "core_src/tarn_common_facade",
    .failure = 0x04010203,
    .failure_line = 251,
    .client = frame::unreached_client::kept,
};

constexpr unsigned int null_observer = 0x04010204;
constexpr unsigned int unusable_search = 0x04010205;
constexpr unsigned int no_shared_memory = 0x04010207;

/// The line of a failure that is not traced.
constexpr int untraced = 0;

/// The lines at which the two failures of a page are traced.
struct page_lines {
    int alloc = untraced;
    int free = untraced;
};

/// Passes on what a step of a list returned, and traces it if it failed and the list's row says so.
template <typename Row>
unsigned int traced(int line, const char* step, unsigned int returned)
{
    if (returned != 0 && line != untraced) {
        frame::trace_error({service.source, Row::label, line}, "[Error]:%s:ret=[0x%08x]", step, returned);
    }
    return returned;
}

/// A call whose reply starts out as the caller's own record, so that a reply that is not filled leaves
/// it as it was.
template <typename Row, typename Info, typename... Values>
unsigned int call_over(bmc_mc_client* client, const with<Values...>& in, Info& info)
{
    frame::exchange<Row> message;
    message.put(in);
    message.template prefill<"info">(info);
    message.send(client);
    message.take(into(info));
    return message.result();
}

}  // namespace

/// The lists whose pages travel through one partition, and what their steps do to it.
class __attribute__((visibility("hidden"))) tarn_common_facade::lists {
public:
    static lists in_boxes(tarn_common_facade& facade)
    {
        return {facade, BOX_PARTITION, BOX_PARTITION_SIZE, facade.box_part_id_, facade.box_mem_flag_};
    }

    static lists in_addresses(tarn_common_facade& facade)
    {
        return {facade, ADDRESS_PARTITION, ADDRESS_PARTITION_SIZE, facade.address_part_id_, facade.address_mem_flag_};
    }

    /// In the place of the addresses' partition: whichever of the two is there serves both.
    static lists in_group_members(tarn_common_facade& facade)
    {
        return {facade, GRP_MEM_ADRS_PRT, GRP_MEM_ADRS_PRT_SIZE, facade.address_part_id_, facade.address_mem_flag_};
    }

    /// A list is prepared even if it then has no partition.
    template <typename Row, typename... Values>
    unsigned int prepare(const with<Values...>& in, const into<unsigned int, unsigned int>& figures,
                         int create_line = untraced)
    {
        return frame::prepare_list<Row>(s_the_client_, in, figures, [&] {
            traced<Row>(create_line, "create_shared_memory",
                        facade_.create_shared_memory(size_, part_id_, mem_flag_, name_));
            return 0U;
        });
    }

    template <typename Row, typename Element, typename... Values>
    unsigned int get(unsigned int blk_id, const with<Values...>& in, unsigned int& count, Element* elements,
                     const page_lines& lines = {})
    {
        return frame::get_page<Row>(
            s_the_client_, in, count, elements,
            [&](void** block) {
                return traced<Row>(
                    lines.alloc, "alloc_shared_memory",
                    facade_.alloc_shared_memory(static_cast<int>(blk_id), block, Row::block_size, part_id_));
            },
            [&](void* block) {
                return traced<Row>(lines.free, "free_shared_memory", facade_.free_shared_memory(block, part_id_));
            },
            no_shared_memory);
    }

    template <typename Row, typename Element>
    unsigned int get(unsigned int blk_id, unsigned int& count, Element* elements, const page_lines& lines = {})
    {
        return get<Row>(blk_id, with(blk_id), count, elements, lines);
    }

    template <typename Row>
    unsigned int finish(unsigned int list)
    {
        return frame::finish_list<Row>(s_the_client_, list,
                                       [&] { return facade_.delete_shared_memory(part_id_, mem_flag_); });
    }

private:
    lists(tarn_common_facade& facade, const char* name, unsigned int size, void*& part_id, unsigned int& mem_flag)
        : facade_(facade), name_(name), size_(size), part_id_(part_id), mem_flag_(mem_flag)
    {
    }

    tarn_common_facade& facade_;
    const char* name_;
    unsigned int size_;
    void*& part_id_;
    unsigned int& mem_flag_;
};

const char* const tarn_common_facade::BOX_PARTITION = "TARN_DATA_BOX_PARTITION";
const unsigned int tarn_common_facade::BOX_PARTITION_SIZE;
const char* const tarn_common_facade::ADDRESS_PARTITION = "TARN_DATA_ADDRESS_PARTITION";
const unsigned int tarn_common_facade::ADDRESS_PARTITION_SIZE;
const char* const tarn_common_facade::GRP_MEM_ADRS_PRT = "TARN_DATA_GRP_MEM_ADRS_PRT";
const unsigned int tarn_common_facade::GRP_MEM_ADRS_PRT_SIZE;

tarn_common_facade* tarn_common_facade::s_the_instance_ = nullptr;
bmc_mc_client* tarn_common_facade::s_the_client_ = nullptr;
unsigned int tarn_common_facade::semid_ = 0;

tarn_common_facade::tarn_common_facade() : part_mutex_(1) {}
tarn_common_facade::~tarn_common_facade() = default;

long tarn_common_facade::dispatch(long, char*, unsigned int, gen_ipc_msghdr) { return 0; }

tarn_common_facade* tarn_common_facade::tarn_common_get_instance()
{
    return frame::instance(s_the_instance_, semid_, [] {
        auto* const facade = new tarn_common_facade;
        facade->initialize_facade(facade);
        return facade;
    });
}

unsigned int tarn_common_facade::initialize_facade(tarn_common_facade*)
{
    return frame::initialize(service, s_the_client_);
}

// Observers

unsigned int tarn_common_facade::tarn_common_add_observer(tarn_common_observer* observer)
{
    return frame::add_observer<wire::add_observer>(s_the_client_, observer, &tarn_common_observer::connection_name_,
                                                   {null_observer, service.source, 1597});
}

unsigned int tarn_common_facade::tarn_common_remove_observer(tarn_common_observer* observer)
{
    return frame::remove_observer<wire::remove_observer>(s_the_client_, observer,
                                                         {null_observer, service.source, 1698});
}

// Service state and activation

unsigned int tarn_common_facade::tarn_common_service_state_changed(TARN_ACCEPTANCE_TYPE type)
{
    return call<wire::service_state_changed>(s_the_client_, with(type));
}

unsigned int tarn_common_facade::tarn_common_network_state_changed(TARN_NETWORK_TYPE type)
{
    return call<wire::network_state_changed>(s_the_client_, with(type));
}

unsigned int tarn_common_facade::tarn_common_request_activate(TARN_KIND_OF_SCENARIO scenario,
                                                              TARN_KIND_OF_APL application)
{
    return call<wire::request_activate>(s_the_client_, with(scenario, application));
}

unsigned int tarn_common_facade::tarn_check_eweb_cert_info(const char* certificate)
{
    return call<wire::check_eweb_cert_info>(s_the_client_, with(certificate));
}

unsigned int tarn_common_facade::tarn_request_all_resident_apps_to_change_state(TARN_REQ_APP_STATE state)
{
    return call<wire::request_all_resident_apps_to_change_state>(s_the_client_, with(state));
}

unsigned int tarn_common_facade::tarn_check_javavm_status(TARN_JAVAVM_STATE& state)
{
    return call<wire::check_javavm_status>(s_the_client_, into(state));
}

// Power

unsigned int tarn_common_facade::tarn_request_energy_saving_mode(TARN_STS_SLEEP state)
{
    return call<wire::request_energy_saving_mode>(s_the_client_, with(state));
}

unsigned int tarn_common_facade::tarn_request_save_mode_prohibition(int flag)
{
    return call<wire::request_save_mode_prohibition>(s_the_client_, with(flag));
}

unsigned int tarn_common_facade::tarn_suspend_deep_sleep(unsigned int value)
{
    return call<wire::suspend_deep_sleep>(s_the_client_, with(value));
}

unsigned int tarn_common_facade::tarn_resume_deep_sleep(unsigned int value)
{
    return call<wire::resume_deep_sleep>(s_the_client_, with(value));
}

unsigned int tarn_common_facade::tarn_set_wakeup_date(unsigned int value, long date)
{
    return call<wire::set_wakeup_date>(s_the_client_, with(value, date));
}

unsigned int tarn_common_facade::tarn_get_wakeup_date() { return call<wire::get_wakeup_date>(s_the_client_); }

unsigned int tarn_common_facade::tarn_check_allowed_to_be_deep_sleep_mode(int& allowed)
{
    return call<wire::check_allowed_to_be_deep_sleep_mode>(s_the_client_, into(allowed));
}

// Boxes and their documents

unsigned int tarn_common_facade::tarn_add_box(const TARN_BOX_DETAIL_INFO& info)
{
    return call<wire::add_box>(s_the_client_, with(info));
}

unsigned int tarn_common_facade::tarn_update_box_info(unsigned long box_id, const char* text,
                                                      const TARN_BOX_DETAIL_INFO& info)
{
    return call<wire::update_box_info>(s_the_client_, with(box_id, text, info));
}

unsigned int tarn_common_facade::tarn_get_box_detail_info(unsigned long box_id, const char* text,
                                                          TARN_BOX_DETAIL_INFO& info)
{
    return call_over<wire::get_box_detail_info>(s_the_client_, with(box_id, text), info);
}

unsigned int tarn_common_facade::tarn_delete_box(unsigned long box_id, const char* text)
{
    return call<wire::delete_box>(s_the_client_, with(box_id, text));
}

unsigned int tarn_common_facade::tarn_delete_document(unsigned long box_id, const char* text, unsigned long document_id)
{
    return call<wire::delete_document>(s_the_client_, with(box_id, text, document_id));
}

unsigned int tarn_common_facade::tarn_delete_easy_document(const char* access_path)
{
    return call<wire::delete_easy_document>(s_the_client_, with(access_path));
}

unsigned int tarn_common_facade::tarn_get_box_available_capacity(unsigned long box_id, unsigned long& capacity)
{
    return call<wire::get_box_available_capacity>(s_the_client_, with(box_id), into(capacity));
}

unsigned int tarn_common_facade::tarn_add_box_bkg(const TARN_BOX_DETAIL_INFO& info, unsigned long cert_id)
{
    return call<wire::add_box_bkg>(s_the_client_, with(info, cert_id));
}

unsigned int tarn_common_facade::tarn_update_box_info_bkg(unsigned long box_id, const char* text, unsigned long cert_id,
                                                          const TARN_BOX_DETAIL_INFO& info)
{
    return call<wire::update_box_info_bkg>(s_the_client_, with(box_id, text, info, cert_id));
}

unsigned int tarn_common_facade::tarn_delete_box_bkg(unsigned long box_id, const char* text, unsigned long cert_id)
{
    return call<wire::delete_box_bkg>(s_the_client_, with(box_id, text, cert_id));
}

unsigned int tarn_common_facade::tarn_get_box_detail_info_bkg(unsigned long box_id, const char* text,
                                                              unsigned long cert_id, TARN_BOX_DETAIL_INFO& info)
{
    return call_over<wire::get_box_detail_info_bkg>(s_the_client_, with(box_id, text, cert_id), info);
}

unsigned int tarn_common_facade::tarn_delete_document_bkg(unsigned long box_id, const char* text,
                                                          unsigned long document_id, unsigned long cert_id)
{
    return call<wire::delete_document_bkg>(s_the_client_, with(box_id, text, document_id, cert_id));
}

unsigned int tarn_common_facade::tarn_get_box_available_capacity_bkg(unsigned long box_id, unsigned long cert_id,
                                                                     unsigned long& capacity)
{
    return call<wire::get_box_available_capacity_bkg>(s_the_client_, with(box_id, cert_id), into(capacity));
}

// Fax boxes and their documents

unsigned int tarn_common_facade::tarn_add_fax_box(const TARN_FAX_BOX_DETAIL_INFO& info)
{
    return call<wire::add_fax_box>(s_the_client_, with(info));
}

unsigned int tarn_common_facade::tarn_update_fax_box_info(unsigned long fax_box_id, const char* text,
                                                          const TARN_FAX_BOX_DETAIL_INFO& info)
{
    return call<wire::update_fax_box_info>(s_the_client_, with(fax_box_id, text, info));
}

unsigned int tarn_common_facade::tarn_get_fax_box_detail_info(unsigned long fax_box_id, const char* text,
                                                              TARN_FAX_BOX_DETAIL_INFO& info)
{
    return call<wire::get_fax_box_detail_info>(s_the_client_, with(fax_box_id, text), into(info));
}

unsigned int tarn_common_facade::tarn_delete_fax_box(unsigned long fax_box_id, const char* text)
{
    return call<wire::delete_fax_box>(s_the_client_, with(fax_box_id, text));
}

unsigned int tarn_common_facade::tarn_delete_fax_document(unsigned long fax_box_id, const char* text,
                                                          unsigned long document_id)
{
    return call<wire::delete_fax_document>(s_the_client_, with(fax_box_id, text, document_id));
}

// Retained jobs

unsigned int tarn_common_facade::tarn_get_job_retention_doc_info(unsigned long document_id, const char* text,
                                                                 TARN_JBRT_DOC_INFO& info)
{
    return call_over<wire::get_job_retention_doc_info>(s_the_client_, with(document_id, text), info);
}

unsigned int tarn_common_facade::tarn_delete_job_retention_doc(TARN_JBRT_BOX_TYPE box_type, unsigned long document_id,
                                                               const char* text)
{
    return call<wire::delete_job_retention_doc>(s_the_client_, with(box_type, document_id, text));
}

// Lists of boxes and documents

unsigned int tarn_common_facade::tarn_get_box_info_prepare(unsigned int num, unsigned int& first, unsigned int& second)
{
    return lists::in_boxes(*this).prepare<wire::box_list_prepare>(with(num), into(first, second));
}

unsigned int tarn_common_facade::tarn_get_box_info_prepare_bkg(unsigned int num, unsigned long cert_id,
                                                               unsigned int& first, unsigned int& second)
{
    return lists::in_boxes(*this).prepare<wire::box_list_prepare_bkg>(with(num, cert_id), into(first, second));
}

unsigned int tarn_common_facade::tarn_get_box_list_info(unsigned int blk_id, unsigned int& count,
                                                        TARN_BOX_LIST_INFO* boxes)
{
    return lists::in_boxes(*this).get<wire::box_list_page>(blk_id, count, boxes);
}

unsigned int tarn_common_facade::tarn_get_box_info_finish(unsigned int list)
{
    return lists::in_boxes(*this).finish<wire::box_list_finish>(list);
}

unsigned int tarn_common_facade::tarn_get_document_info_prepare(unsigned long box_id, const char* text,
                                                                unsigned int num, unsigned int& first,
                                                                unsigned int& second)
{
    return lists::in_boxes(*this).prepare<wire::document_list_prepare>(with(box_id, text, num), into(first, second));
}

unsigned int tarn_common_facade::tarn_get_document_info_prepare_bkg(unsigned long box_id, const char* text,
                                                                    unsigned int num, unsigned long cert_id,
                                                                    unsigned int& first, unsigned int& second)
{
    return lists::in_boxes(*this).prepare<wire::document_list_prepare_bkg>(with(box_id, text, num, cert_id),
                                                                           into(first, second), 5368);
}

unsigned int tarn_common_facade::tarn_get_document_info(unsigned int blk_id, unsigned int& count,
                                                        TARN_DOC_INFO* documents)
{
    return lists::in_boxes(*this).get<wire::document_list_page>(blk_id, count, documents);
}

unsigned int tarn_common_facade::tarn_get_document_info_finish(unsigned int list)
{
    return lists::in_boxes(*this).finish<wire::document_list_finish>(list);
}

unsigned int tarn_common_facade::tarn_get_easy_box_info_prepare(const char* access_path, unsigned int num,
                                                                unsigned int& first, unsigned int& second)
{
    return lists::in_boxes(*this).prepare<wire::easy_box_list_prepare>(with(access_path, num), into(first, second));
}

unsigned int tarn_common_facade::tarn_get_easy_box_info(unsigned int blk_id, unsigned int& count,
                                                        TARN_EASY_BOX_INFO* boxes)
{
    return lists::in_boxes(*this).get<wire::easy_box_list_page>(blk_id, count, boxes);
}

unsigned int tarn_common_facade::tarn_get_easy_box_info_finish(unsigned int list)
{
    return lists::in_boxes(*this).finish<wire::easy_box_list_finish>(list);
}

unsigned int tarn_common_facade::tarn_get_fax_box_list_prepare(unsigned int num, unsigned int& first,
                                                               unsigned int& second)
{
    return lists::in_boxes(*this).prepare<wire::fax_box_list_prepare>(with(num), into(first, second), 4259);
}

unsigned int tarn_common_facade::tarn_get_fax_box_list(unsigned int blk_id, unsigned int& count,
                                                       TARN_FAX_BOX_LIST* boxes)
{
    return lists::in_boxes(*this).get<wire::fax_box_list_page>(blk_id, count, boxes);
}

unsigned int tarn_common_facade::tarn_get_fax_box_list_finish(unsigned int list)
{
    return lists::in_boxes(*this).finish<wire::fax_box_list_finish>(list);
}

unsigned int tarn_common_facade::tarn_get_fax_document_list_prepare(unsigned long fax_box_id, const char* text,
                                                                    unsigned int num, unsigned int& first,
                                                                    unsigned int& second)
{
    return lists::in_boxes(*this).prepare<wire::fax_document_list_prepare>(with(fax_box_id, text, num),
                                                                           into(first, second));
}

unsigned int tarn_common_facade::tarn_get_fax_document_list(unsigned int blk_id, unsigned int& count,
                                                            TARN_FAX_DOC_LIST* documents)
{
    return lists::in_boxes(*this).get<wire::fax_document_list_page>(blk_id, count, documents);
}

unsigned int tarn_common_facade::tarn_get_fax_document_list_finish(unsigned int list)
{
    return lists::in_boxes(*this).finish<wire::fax_document_list_finish>(list);
}

unsigned int tarn_common_facade::tarn_get_job_retention_doc_list_prepare(TARN_JBRT_BOX_TYPE box_type, unsigned int num,
                                                                         unsigned int& first, unsigned int& second)
{
    return lists::in_boxes(*this).prepare<wire::retention_list_prepare>(with(box_type, num), into(first, second));
}

unsigned int tarn_common_facade::tarn_get_job_retention_doc_list(unsigned int blk_id, unsigned int& count,
                                                                 TARN_JBRT_DOC_LIST* documents)
{
    return lists::in_boxes(*this).get<wire::retention_list_page>(blk_id, count, documents);
}

unsigned int tarn_common_facade::tarn_get_job_retention_doc_list_finish(unsigned int list)
{
    return lists::in_boxes(*this).finish<wire::retention_list_finish>(list);
}

// Lists of addresses

unsigned int tarn_common_facade::tarn_get_personal_address_list_prepare(unsigned int num, unsigned int& first,
                                                                        unsigned int& second)
{
    return lists::in_addresses(*this).prepare<wire::personal_address_list_prepare>(with(num), into(first, second));
}

unsigned int tarn_common_facade::tarn_get_personal_address_list(unsigned int blk_id, unsigned int& count,
                                                                TARN_PERSONAL_ADDRESS* addresses)
{
    return lists::in_addresses(*this).get<wire::personal_address_list_page>(blk_id, count, addresses);
}

unsigned int tarn_common_facade::tarn_get_personal_address_list_finish(unsigned int list)
{
    return lists::in_addresses(*this).finish<wire::personal_address_list_finish>(list);
}

unsigned int tarn_common_facade::tarn_get_group_address_list_prepare(unsigned int num, unsigned int& first,
                                                                     unsigned int& second)
{
    return lists::in_addresses(*this).prepare<wire::group_address_list_prepare>(with(num), into(first, second));
}

unsigned int tarn_common_facade::tarn_get_group_address_list(unsigned int blk_id, unsigned int& count,
                                                             TARN_GROUP_ADDRESS* addresses)
{
    return lists::in_addresses(*this).get<wire::group_address_list_page>(blk_id, count, addresses);
}

unsigned int tarn_common_facade::tarn_get_group_address_list_finish(unsigned int list)
{
    return lists::in_addresses(*this).finish<wire::group_address_list_finish>(list);
}

unsigned int tarn_common_facade::tarn_get_group_member_address_list_prepare(unsigned short group, unsigned int num,
                                                                            unsigned int& first, unsigned int& second)
{
    return lists::in_addresses(*this).prepare<wire::group_member_address_list_prepare>(with(group, num),
                                                                                       into(first, second));
}

unsigned int tarn_common_facade::tarn_get_group_member_address_list(unsigned int blk_id, unsigned int& count,
                                                                    TARN_PERSONAL_ADDRESS* addresses)
{
    return lists::in_addresses(*this).get<wire::group_member_address_list_page>(blk_id, count, addresses);
}

unsigned int tarn_common_facade::tarn_get_group_member_address_list_grp_mem_str_prepare(unsigned short group,
                                                                                        unsigned int num,
                                                                                        unsigned int& first,
                                                                                        unsigned int& second)
{
    return lists::in_group_members(*this).prepare<wire::group_member_list_prepare>(with(group, num),
                                                                                   into(first, second), 3289);
}

unsigned int tarn_common_facade::tarn_get_group_member_address_list(unsigned int blk_id, unsigned int& count,
                                                                    TARN_GROUP_MEMBER* members)
{
    return lists::in_addresses(*this).get<wire::group_member_list_page>(blk_id, count, members, {3408, 3433});
}

unsigned int tarn_common_facade::tarn_get_group_member_address_list_finish(unsigned int list)
{
    return lists::in_addresses(*this).finish<wire::group_member_address_list_finish>(list);
}

// Searches of the address lists

unsigned int tarn_common_facade::tarn_search_personal_address_list_prepare(unsigned int num, unsigned int& first,
                                                                           unsigned int& second)
{
    return lists::in_addresses(*this).prepare<wire::search_personal_prepare>(with(num), into(first, second));
}

unsigned int tarn_common_facade::tarn_search_personal_address_list_prepare(unsigned int num, const char* name,
                                                                           unsigned int& first, unsigned int& second)
{
    return lists::in_addresses(*this).prepare<wire::search_personal_by_name_prepare>(with(num, name),
                                                                                     into(first, second), 3582);
}

unsigned int tarn_common_facade::tarn_search_personal_address_list(unsigned int blk_id, const char* name,
                                                                   unsigned int& count,
                                                                   TARN_PERSONAL_ADDRESS* addresses)
{
    if (*name == '\0' || addresses == nullptr) return unusable_search;
    return lists::in_addresses(*this).get<wire::search_personal_page>(blk_id, with(blk_id, name), count, addresses);
}

unsigned int tarn_common_facade::tarn_search_personal_address_list_finish(unsigned int list)
{
    return lists::in_addresses(*this).finish<wire::search_personal_finish>(list);
}

unsigned int tarn_common_facade::tarn_search_group_address_list_prepare(unsigned int num, unsigned int& first,
                                                                        unsigned int& second)
{
    return lists::in_addresses(*this).prepare<wire::search_group_prepare>(with(num), into(first, second));
}

unsigned int tarn_common_facade::tarn_search_group_address_list_prepare(unsigned int num, const char* name,
                                                                        unsigned int& first, unsigned int& second)
{
    return lists::in_addresses(*this).prepare<wire::search_group_by_name_prepare>(with(num, name), into(first, second));
}

unsigned int tarn_common_facade::tarn_search_group_address_list(unsigned int blk_id, const char* name,
                                                                unsigned int& count, TARN_GROUP_ADDRESS* addresses)
{
    if (*name == '\0') return unusable_search;
    return lists::in_addresses(*this).get<wire::search_group_page>(blk_id, with(blk_id, name), count, addresses);
}

unsigned int tarn_common_facade::tarn_search_group_address_list_finish(unsigned int list)
{
    return lists::in_addresses(*this).finish<wire::search_group_finish>(list);
}

// Partitions

unsigned int tarn_common_facade::create_shared_memory(unsigned long size, void*& part_id, unsigned int& mem_flag,
                                                      const char* name)
{
    const OSW_Guard lock(part_mutex_);
    if (part_id == nullptr && !frame::create_partition(part_id, name, size)) return no_shared_memory;
    mem_flag = frame::one_more_user(mem_flag);
    return 0;
}

unsigned int tarn_common_facade::alloc_shared_memory(int blk_id, void** block, unsigned long size, void*& part_id)
{
    const OSW_Guard lock(part_mutex_);
    return frame::take_block(part_id, blk_id, block, size, frame::found_block::cleared) ? 0 : no_shared_memory;
}

unsigned int tarn_common_facade::free_shared_memory(void* block, void* part_id)
{
    const OSW_Guard lock(part_mutex_);
    return frame::free_block(part_id, block) ? 0 : no_shared_memory;
}

unsigned int tarn_common_facade::delete_shared_memory(void*& part_id, unsigned int& mem_flag)
{
    const OSW_Guard lock(part_mutex_);
    --mem_flag;
    if (mem_flag != 0) return 0;
    if (!frame::delete_partition(part_id)) return no_shared_memory;
    part_id = nullptr;
    return 0;
}

}  // namespace norvane
