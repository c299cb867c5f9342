// How the classes lie in memory and how their virtual operations are numbered: programs that were built
// against them rely on both.
#include "tarn_acc_facade.h"
#include "tarn_acc_observer.h"
#include "tarn_common_facade.h"
#include "tarn_common_observer.h"
#include "tarn_dept_facade.h"
#include "tarn_job_facade.h"
#include "tarn_job_observer.h"
#include "tarn_jobinfo_facade.h"
#include "tarn_jobinfo_observer.h"
#include "tarn_panel_facade.h"
#include "tarn_panel_observer.h"
#include "tarn_systeminfo_facade.h"
#include "tarn_user_facade.h"
#include "tarn_webservice_facade.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

using namespace norvane;

/// A pointer's size: 4 on the controller's processor.
constexpr std::size_t word = sizeof(void*);

/// The class has this size on the controller's processor. Elsewhere it may have another.
template <typename Class>
constexpr bool has_size(std::size_t bytes)
{
    return word != 4 || sizeof(Class) == bytes;
}

static_assert(sizeof(gen_ipc_msghdr) == 72);
static_assert(has_size<bmc_mc_client>(8));
static_assert(has_size<OSW_Mutex_Semaphore>(4));

static_assert(has_size<tarn_common_facade>(24));
static_assert(has_size<tarn_job_facade>(36));
static_assert(has_size<tarn_user_facade>(16));
static_assert(has_size<tarn_systeminfo_facade>(4));
static_assert(has_size<tarn_webservice_facade>(4));
static_assert(has_size<tarn_panel_facade>(4));
static_assert(has_size<tarn_dept_facade>(4));
static_assert(has_size<tarn_jobinfo_facade>(4));
static_assert(has_size<tarn_acc_facade>(4));

static_assert(has_size<tarn_common_observer>(24));
static_assert(has_size<tarn_panel_observer>(24));
static_assert(has_size<tarn_job_observer>(24));
static_assert(has_size<tarn_acc_observer>(24));
static_assert(has_size<tarn_jobinfo_observer>(24));

/// Where members stand in an object, one behind the other as they are named.
template <typename Class, typename... Members>
std::vector<std::size_t> offsets(const Class& object, const Members&... members)
{
    const auto* const begin = reinterpret_cast<const char*>(&object);
    return {static_cast<std::size_t>(reinterpret_cast<const char*>(&members) - begin)...};
}

TEST(class_layout, common_facade_members)
{
    const tarn_common_facade facade;
    EXPECT_EQ(offsets(facade, facade.part_mutex_, facade.address_part_id_, facade.box_part_id_,
                      facade.address_mem_flag_, facade.box_mem_flag_),
              (std::vector<std::size_t>{word, 2 * word, 3 * word, 4 * word, 4 * word + 4}));
}

TEST(class_layout, user_facade_members)
{
    const tarn_user_facade facade;
    EXPECT_EQ(offsets(facade, facade.part_mutex_, facade.part_id_, facade.mem_flag_),
              (std::vector<std::size_t>{word, 2 * word, 3 * word}));
}

TEST(class_layout, job_facade_members)
{
    const tarn_job_facade facade;
    EXPECT_EQ(offsets(facade, facade.job_mutex_, facade.shm_mutex_, facade.job_part_id_, facade.job_ocr_part_id_,
                      facade.job_stm_part_id_, facade.shared_mem_stream_data_, facade.shared_mem_scan_data_,
                      facade.shared_mem_ocr_data_),
              (std::vector<std::size_t>{word, 2 * word, 3 * word, 4 * word, 5 * word, 6 * word, 7 * word, 8 * word}));
}

/// The slot of a virtual operation in its class's table: a pointer to the operation holds one more than
/// the slot's offset.
template <typename Class, typename... Parameters, typename Result>
std::size_t slot(Result (Class::*operation)(Parameters...))
{
    std::uintptr_t place = 0;
    std::memcpy(&place, &operation, sizeof place);
    EXPECT_EQ(place % sizeof(void*), 1U) << "not a virtual operation";
    return place / sizeof(void*);
}

/// The operations, as they are named, have the slots from 2 on. Those before are the destructor's.
template <typename... Operations>
void expect_slots(Operations... operations)
{
    std::size_t expected = 2;
    for (const std::size_t each : {slot(operations)...}) EXPECT_EQ(each, expected++);
}

TEST(class_layout, facade_slots)
{
    expect_slots(&tarn_common_facade::dispatch);
    expect_slots(&tarn_job_facade::dispatch);
    expect_slots(&tarn_user_facade::dispatch);
    expect_slots(&tarn_systeminfo_facade::dispatch);
    expect_slots(&tarn_webservice_facade::dispatch);
    expect_slots(&tarn_panel_facade::dispatch);
    expect_slots(&tarn_dept_facade::dispatch);
    expect_slots(&tarn_jobinfo_facade::dispatch);
    expect_slots(&tarn_acc_facade::dispatch);
}

TEST(class_layout, common_observer_slots)
{
    using observer = tarn_common_observer;
    expect_slots(&observer::dispatch, &observer::service_state_changed, &observer::network_state_changed,
                 &observer::request_activate, &observer::notify_logout, &observer::notify_pbp_connection_error,
                 &observer::notify_sleep, &observer::notify_usb_memory_status, &observer::notify_toner_status,
                 &observer::notify_waste_toner_bottle_status, &observer::notify_paper_rest_status,
                 &observer::notify_cover_status, &observer::notify_dp_cover_status, &observer::notify_jam_status,
                 &observer::notify_dp_jam_status, &observer::notify_coin_vender_status,
                 &observer::notify_key_card_status, &observer::notify_key_counter_status,
                 &observer::notify_resident_app_state_changed, &observer::notify_javavm_get_free_mem);
}

TEST(class_layout, panel_observer_slots)
{
    using observer = tarn_panel_observer;
    expect_slots(&observer::dispatch, &observer::notify_key_event, &observer::notify_auto_panel_reset);
}

TEST(class_layout, job_observer_slots)
{
    using observer = tarn_job_observer;
    expect_slots(&observer::dispatch, &observer::notify_job_state_changed, &observer::notify_scan_count,
                 &observer::notify_start_phb, &observer::notify_disable_info, &observer::notify_main_message,
                 &observer::notify_phb_info, &observer::notify_message_info);
}

TEST(class_layout, acc_observer_slots)
{
    using observer = tarn_acc_observer;
    expect_slots(&observer::dispatch, &observer::notify_iccard_detect, &observer::notify_iccard_read_error,
                 &observer::notify_iccard_state_change_info);
}

TEST(class_layout, jobinfo_observer_slots)
{
    using observer = tarn_jobinfo_observer;
    expect_slots(&observer::dispatch, &observer::notify_job_update_log, &observer::notify_print_page_info,
                 &observer::notify_scan_page_info, &observer::notify_fax_send_page_info,
                 &observer::notify_renint_start_info, &observer::notify_imagelog_create_status);
}

}  // namespace
