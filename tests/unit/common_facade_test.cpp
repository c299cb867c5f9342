#include "tarn_common_facade.h"

#include "tarn_common_observer.h"
#include "unit/facade_test.h"

#include <type_traits>

namespace {

using namespace testing_platform;
using norvane::tarn_common_facade;
using norvane::tarn_common_observer;

/// The statics as they are when the program is loaded, before any test has touched them.
const bool nothing_at_load = tarn_common_facade::s_the_instance_ == nullptr &&
                             tarn_common_facade::s_the_client_ == nullptr && tarn_common_facade::semid_ == 0;

class common_facade : public facade_test<tarn_common_facade> {
protected:
    common_facade() : facade_test(&tarn_common_facade::tarn_common_get_instance) {}
};

const creation_row creation{1, 0x04010203, 251, "core_src/tarn_common_facade", false};

constexpr unsigned long box_id = 0xB0B1B2B3;
constexpr unsigned long document_id = 0xD0D1D2D3;
constexpr unsigned long cert_id = 0xC0C1C2C3;

template <typename Enumeration>
constexpr auto enumerated = static_cast<Enumeration>(0xE1E2E3E4);

/// Texts shorter than, as long as and longer than `bound`, each with what of it is to be sent.
void exercise_text(std::size_t bound, const std::function<void(const char* text, const std::string& sent)>& check)
{
    for (const std::size_t length : {std::size_t{0}, std::size_t{3}, bound - 1, bound, bound + 1, bound + 60}) {
        SCOPED_TRACE(length);
        const std::string text = record(length).pattern(0, length).bytes();
        check(text.c_str(), text.substr(0, bound));
    }
}

// The facade

TEST_F(common_facade, waits_for_its_service) { exercise_initialization(facade(), creation); }

TEST_F(common_facade, is_published_when_the_service_never_comes)
{
    exercise_unreached<tarn_common_facade>(&tarn_common_facade::tarn_common_get_instance, creation,
                                           [](tarn_common_facade& facade) { return facade.tarn_get_wakeup_date(); });
}

TEST_F(common_facade, is_made_once_by_many_threads)
{
    exercise_creation_race(&tarn_common_facade::tarn_common_get_instance);
}

TEST_F(common_facade, makes_its_creation_semaphore_once_under_the_process_lock)
{
    facade();
    facade();
    EXPECT_EQ(platform().thread_guards, 1);
    EXPECT_NE(tarn_common_facade::semid_, 0U);
    EXPECT_EQ(platform().events, (std::vector<std::string>{"request", "release"})) << "the second call takes no lock";
}

TEST_F(common_facade, is_not_there_before_it_is_asked_for) { EXPECT_TRUE(nothing_at_load); }

TEST_F(common_facade, dispatch_does_nothing)
{
    char message[80] = {};
    facade().dispatch(2, message, sizeof message, {});
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_TRUE(platform().reports.empty());
}

TEST_F(common_facade, starts_without_partitions)
{
    EXPECT_EQ(facade().address_part_id_, nullptr);
    EXPECT_EQ(facade().box_part_id_, nullptr);
    EXPECT_EQ(facade().address_mem_flag_, 0U);
    EXPECT_EQ(facade().box_mem_flag_, 0U);
}

TEST_F(common_facade, keeps_the_order_of_its_members)
{
    const auto address = [](const auto& member) { return reinterpret_cast<std::uintptr_t>(&member); };
    const auto& object = facade();
    const std::uintptr_t begin = address(object);
    EXPECT_EQ(address(object.part_mutex_) - begin, sizeof(void*));
    EXPECT_EQ(address(object.address_part_id_) - begin, 2 * sizeof(void*));
    EXPECT_EQ(address(object.box_part_id_) - begin, 3 * sizeof(void*));
    EXPECT_EQ(address(object.address_mem_flag_) - begin, 4 * sizeof(void*));
    EXPECT_EQ(address(object.box_mem_flag_) - begin, 4 * sizeof(void*) + 4);
    EXPECT_EQ(sizeof object, 4 * sizeof(void*) + 8);
}

TEST_F(common_facade, names_its_partitions)
{
    EXPECT_STREQ(tarn_common_facade::BOX_PARTITION, "TARN_DATA_BOX_PARTITION");
    EXPECT_STREQ(tarn_common_facade::ADDRESS_PARTITION, "TARN_DATA_ADDRESS_PARTITION");
    EXPECT_STREQ(tarn_common_facade::GRP_MEM_ADRS_PRT, "TARN_DATA_GRP_MEM_ADRS_PRT");
    // By address, so that it is the library's symbol that is read.
    const std::vector<const unsigned int*> sizes{&tarn_common_facade::BOX_PARTITION_SIZE,
                                                 &tarn_common_facade::ADDRESS_PARTITION_SIZE,
                                                 &tarn_common_facade::GRP_MEM_ADRS_PRT_SIZE};
    EXPECT_EQ(*sizes[0], 154000U);
    EXPECT_EQ(*sizes[1], 42480U);
    EXPECT_EQ(*sizes[2], 21360U);
}

template <typename Record>
void expect_size(std::size_t size)
{
    EXPECT_EQ(sizeof(Record), size);
    EXPECT_TRUE(std::is_trivially_copyable_v<Record>);
}

TEST_F(common_facade, records_have_their_sizes)
{
    expect_size<TARN_BOX_DETAIL_INFO>(764);
    expect_size<TARN_FAX_BOX_DETAIL_INFO>(764);
    expect_size<TARN_JBRT_DOC_INFO>(16);
    expect_size<TARN_BOX_LIST_INFO>(748);
    expect_size<TARN_DOC_INFO>(292);
    expect_size<TARN_EASY_BOX_INFO>(3080);
    expect_size<TARN_FAX_BOX_LIST>(748);
    expect_size<TARN_FAX_DOC_LIST>(292);
    expect_size<TARN_JBRT_DOC_LIST>(408);
    expect_size<TARN_PERSONAL_ADDRESS>(2124);
    expect_size<TARN_GROUP_ADDRESS>(390);
    expect_size<TARN_GROUP_MEMBER>(1068);
}

// Observers

std::uint32_t low_word(const void* address)
{
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(address));
}

TEST_F(common_facade, add_observer)
{
    for (const std::size_t length : {0U, 4U, 14U, 15U, 16U, 30U}) {
        SCOPED_TRACE(length);
        std::string name = record(length).pattern(0, length).bytes();
        tarn_common_observer observer(77, name.data());
        exercise({1, 0, record(92).u32(72, low_word(&observer)).text(76, name.substr(0, 15)), record(16), 12},
                 [&] { return facade().tarn_common_add_observer(&observer); });
    }
}

TEST_F(common_facade, remove_observer)
{
    char name[] = "TARN_OBS0000009";
    tarn_common_observer observer(77, name);
    exercise({1, 1, record(92).u32(72, low_word(&observer)), record(16), 12},
             [&] { return facade().tarn_common_remove_observer(&observer); });
}

TEST_F(common_facade, a_null_observer_is_refused)
{
    facade();
    platform().reset();
    EXPECT_EQ(facade().tarn_common_add_observer(nullptr), 0x04010204U);
    EXPECT_EQ(facade().tarn_common_remove_observer(nullptr), 0x04010204U);
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_TRUE(platform().traces.empty());
    EXPECT_EQ(platform().reports,
              (std::vector<report>{{63124, 0, 0, "core_src/tarn_common_facade", "tarn_common_add_observer", 1597},
                                   {63124, 0, 0, "core_src/tarn_common_facade", "tarn_common_remove_observer", 1698}}));
}

// Service state and activation

TEST_F(common_facade, service_state_changed)
{
    exercise({1, 2, record(76).u32(72, 0xE1E2E3E4), record(16), 12},
             [&] { return facade().tarn_common_service_state_changed(enumerated<TARN_ACCEPTANCE_TYPE>); });
}

TEST_F(common_facade, network_state_changed)
{
    exercise({1, 3, record(76).u32(72, 0xE1E2E3E4), record(16), 12},
             [&] { return facade().tarn_common_network_state_changed(enumerated<TARN_NETWORK_TYPE>); });
}

TEST_F(common_facade, request_activate)
{
    exercise({1, 4, record(80).u32(72, 0xE1E2E3E4).u32(76, 0x01020304), record(16), 12}, [&] {
        return facade().tarn_common_request_activate(enumerated<TARN_KIND_OF_SCENARIO>,
                                                     static_cast<TARN_KIND_OF_APL>(0x01020304));
    });
}

TEST_F(common_facade, check_eweb_cert_info)
{
    for (const std::size_t length : {0U, 1U, 35U, 36U, 37U, 500U}) {
        SCOPED_TRACE(length);
        const std::string text = record(length).pattern(0, length).bytes();
        exercise({1, 9, record(108).text(72, text.substr(0, 36)), record(16), 12},
                 [&] { return facade().tarn_check_eweb_cert_info(text.c_str()); });
    }
}

TEST_F(common_facade, request_all_resident_apps_to_change_state)
{
    exercise({1, 58, record(76).u32(72, 0xE1E2E3E4), record(16), 12},
             [&] { return facade().tarn_request_all_resident_apps_to_change_state(enumerated<TARN_REQ_APP_STATE>); });
}

TEST_F(common_facade, check_javavm_status)
{
    TARN_JAVAVM_STATE state{};
    exercise(
        {1, 85, record(72), record(20).u32(16, 0xA1A2A3A4), 12},
        [&] {
            state = enumerated<TARN_JAVAVM_STATE>;
            return facade().tarn_check_javavm_status(state);
        },
        [&] { EXPECT_EQ(state, 0xA1A2A3A4U); }, [&] { EXPECT_EQ(state, 0U); });
}

// Power

TEST_F(common_facade, request_energy_saving_mode)
{
    exercise({1, 29, record(76).u32(72, 0xE1E2E3E4), record(16), 12},
             [&] { return facade().tarn_request_energy_saving_mode(enumerated<TARN_STS_SLEEP>); });
}

TEST_F(common_facade, request_save_mode_prohibition)
{
    exercise({1, 52, record(76).u32(72, 0xFFFFFFFE), record(16), 12},
             [&] { return facade().tarn_request_save_mode_prohibition(-2); });
}

TEST_F(common_facade, suspend_deep_sleep)
{
    exercise({1, 53, record(76).u32(72, 0x90919293), record(16), 12},
             [&] { return facade().tarn_suspend_deep_sleep(0x90919293); });
}

TEST_F(common_facade, resume_deep_sleep)
{
    exercise({1, 54, record(76).u32(72, 0x80818283), record(16), 12},
             [&] { return facade().tarn_resume_deep_sleep(0x80818283); });
}

TEST_F(common_facade, set_wakeup_date)
{
    exercise({1, 55, record(80).u32(72, 0x70717273).u32(76, 0xFFFFFFF0), record(16), 12},
             [&] { return facade().tarn_set_wakeup_date(0x70717273, -16); });
}

TEST_F(common_facade, get_wakeup_date)
{
    exercise({1, 56, record(72), record(16), 12}, [&] { return facade().tarn_get_wakeup_date(); });
}

TEST_F(common_facade, check_allowed_to_be_deep_sleep_mode)
{
    int allowed = 0;
    exercise(
        {1, 57, record(72), record(20).u32(16, 0xFFFFFFFD), 12},
        [&] {
            allowed = 5;
            return facade().tarn_check_allowed_to_be_deep_sleep_mode(allowed);
        },
        [&] { EXPECT_EQ(allowed, -3); }, [&] { EXPECT_EQ(allowed, 0); });
}

// Boxes and their documents

TEST_F(common_facade, add_box)
{
    const auto info = patterned<TARN_BOX_DETAIL_INFO>();
    exercise({1, 38, record(836).pattern(72, 764), record(16), 12}, [&] { return facade().tarn_add_box(info); });
}

TEST_F(common_facade, update_box_info)
{
    const auto info = patterned<TARN_BOX_DETAIL_INFO>(2);
    exercise_text(17, [&](const char* text, const std::string& sent) {
        exercise({1, 39, record(860).u32(72, 0xB0B1B2B3).text(76, sent).pattern(96, 764, 2), record(16), 12},
                 [&] { return facade().tarn_update_box_info(box_id, text, info); });
    });
}

TEST_F(common_facade, get_box_detail_info)
{
    TARN_BOX_DETAIL_INFO info;
    exercise_text(17, [&](const char* text, const std::string& sent) {
        exercise(
            {1, 40, record(860).u32(72, 0xB0B1B2B3).text(76, sent), record(780).pattern(16, 764, 3), 12},
            [&] {
                info = patterned<TARN_BOX_DETAIL_INFO>(4);
                return facade().tarn_get_box_detail_info(box_id, text, info);
            },
            [&] { EXPECT_EQ(bytes_of(info), record(764).pattern(0, 764, 3).bytes()); },
            [&] { EXPECT_EQ(bytes_of(info), record(764).pattern(0, 764, 4).bytes()) << "as it was"; });
    });
}

TEST_F(common_facade, delete_box)
{
    exercise_text(17, [&](const char* text, const std::string& sent) {
        exercise({1, 41, record(96).u32(72, 0xB0B1B2B3).text(76, sent), record(16), 12},
                 [&] { return facade().tarn_delete_box(box_id, text); });
    });
}

TEST_F(common_facade, delete_document)
{
    exercise_text(17, [&](const char* text, const std::string& sent) {
        exercise({1, 42, record(100).u32(72, 0xB0B1B2B3).text(76, sent).u32(96, 0xD0D1D2D3), record(16), 12},
                 [&] { return facade().tarn_delete_document(box_id, text, document_id); });
    });
}

TEST_F(common_facade, delete_easy_document)
{
    exercise_text(1531, [&](const char* text, const std::string& sent) {
        exercise({1, 43, record(1604).text(72, sent), record(16), 12},
                 [&] { return facade().tarn_delete_easy_document(text); });
    });
}

TEST_F(common_facade, get_box_available_capacity)
{
    unsigned long capacity = 0;
    exercise(
        {1, 44, record(76).u32(72, 0xB0B1B2B3), record(20).u32(16, 0xFEDCBA98), 12},
        [&] {
            capacity = ~0UL;
            return facade().tarn_get_box_available_capacity(box_id, capacity);
        },
        [&] { EXPECT_EQ(capacity, 0xFEDCBA98UL); }, [&] { EXPECT_EQ(capacity, 0UL); });
}

TEST_F(common_facade, add_box_bkg)
{
    const auto info = patterned<TARN_BOX_DETAIL_INFO>();
    exercise({1, 77, record(840).pattern(72, 764).u32(836, 0xC0C1C2C3), record(16), 12},
             [&] { return facade().tarn_add_box_bkg(info, cert_id); });
}

TEST_F(common_facade, update_box_info_bkg)
{
    const auto info = patterned<TARN_BOX_DETAIL_INFO>(2);
    exercise_text(17, [&](const char* text, const std::string& sent) {
        exercise({1, 78, record(864).u32(72, 0xB0B1B2B3).text(76, sent).pattern(96, 764, 2).u32(860, 0xC0C1C2C3),
                  record(16), 12},
                 [&] { return facade().tarn_update_box_info_bkg(box_id, text, cert_id, info); });
    });
}

TEST_F(common_facade, delete_box_bkg)
{
    exercise_text(17, [&](const char* text, const std::string& sent) {
        exercise({1, 79, record(100).u32(72, 0xB0B1B2B3).text(76, sent).u32(96, 0xC0C1C2C3), record(16), 12},
                 [&] { return facade().tarn_delete_box_bkg(box_id, text, cert_id); });
    });
}

TEST_F(common_facade, delete_document_bkg)
{
    exercise_text(17, [&](const char* text, const std::string& sent) {
        exercise({1, 82, record(104).u32(72, 0xB0B1B2B3).text(76, sent).u32(96, 0xD0D1D2D3).u32(100, 0xC0C1C2C3),
                  record(16), 12},
                 [&] { return facade().tarn_delete_document_bkg(box_id, text, document_id, cert_id); });
    });
}

TEST_F(common_facade, get_box_detail_info_bkg)
{
    TARN_BOX_DETAIL_INFO info;
    exercise_text(17, [&](const char* text, const std::string& sent) {
        exercise(
            {1, 83, record(864).u32(72, 0xB0B1B2B3).text(76, sent).u32(860, 0xC0C1C2C3),
             record(780).pattern(16, 764, 5), 12},
            [&] {
                info = patterned<TARN_BOX_DETAIL_INFO>(6);
                return facade().tarn_get_box_detail_info_bkg(box_id, text, cert_id, info);
            },
            [&] { EXPECT_EQ(bytes_of(info), record(764).pattern(0, 764, 5).bytes()); },
            [&] { EXPECT_EQ(bytes_of(info), record(764).pattern(0, 764, 6).bytes()) << "as it was"; });
    });
}

TEST_F(common_facade, get_box_available_capacity_bkg)
{
    unsigned long capacity = 0;
    exercise(
        {1, 84, record(80).u32(72, 0xB0B1B2B3).u32(76, 0xC0C1C2C3), record(20).u32(16, 0x89ABCDEF), 12},
        [&] {
            capacity = ~0UL;
            return facade().tarn_get_box_available_capacity_bkg(box_id, cert_id, capacity);
        },
        [&] { EXPECT_EQ(capacity, 0x89ABCDEFUL); }, [&] { EXPECT_EQ(capacity, 0UL); });
}

// Fax boxes and their documents

TEST_F(common_facade, get_fax_box_detail_info)
{
    TARN_FAX_BOX_DETAIL_INFO info;
    exercise_text(17, [&](const char* text, const std::string& sent) {
        exercise(
            {1, 64, record(96).u32(72, 0xB0B1B2B3).text(76, sent), record(780).pattern(16, 764, 7), 12},
            [&] {
                info = patterned<TARN_FAX_BOX_DETAIL_INFO>(8);
                return facade().tarn_get_fax_box_detail_info(box_id, text, info);
            },
            [&] { EXPECT_EQ(bytes_of(info), record(764).pattern(0, 764, 7).bytes()); },
            [&] { EXPECT_EQ(bytes_of(info), record(764).bytes()) << "cleared"; });
    });
}

TEST_F(common_facade, add_fax_box)
{
    const auto info = patterned<TARN_FAX_BOX_DETAIL_INFO>();
    exercise({1, 65, record(836).pattern(72, 764), record(16), 12}, [&] { return facade().tarn_add_fax_box(info); });
}

TEST_F(common_facade, update_fax_box_info)
{
    const auto info = patterned<TARN_FAX_BOX_DETAIL_INFO>(2);
    exercise_text(17, [&](const char* text, const std::string& sent) {
        exercise({1, 66, record(860).u32(72, 0xB0B1B2B3).text(76, sent).pattern(96, 764, 2), record(16), 12},
                 [&] { return facade().tarn_update_fax_box_info(box_id, text, info); });
    });
}

TEST_F(common_facade, delete_fax_box)
{
    exercise_text(17, [&](const char* text, const std::string& sent) {
        exercise({1, 67, record(96).u32(72, 0xB0B1B2B3).text(76, sent), record(16), 12},
                 [&] { return facade().tarn_delete_fax_box(box_id, text); });
    });
}

TEST_F(common_facade, delete_fax_document)
{
    exercise_text(17, [&](const char* text, const std::string& sent) {
        exercise({1, 71, record(100).u32(72, 0xB0B1B2B3).text(76, sent).u32(96, 0xD0D1D2D3), record(16), 12},
                 [&] { return facade().tarn_delete_fax_document(box_id, text, document_id); });
    });
}

// Retained jobs

TEST_F(common_facade, get_job_retention_doc_info)
{
    TARN_JBRT_DOC_INFO info;
    exercise_text(5, [&](const char* text, const std::string& sent) {
        exercise(
            {1, 75, record(84).u32(72, 0xD0D1D2D3).text(76, sent),
             record(32).u32(16, 0x11111111).u32(20, 0x22222222).u32(24, 0x33333333).u32(28, 0x44444444), 12},
            [&] {
                info = {{5, 6, 7, 8}};
                return facade().tarn_get_job_retention_doc_info(document_id, text, info);
            },
            [&] {
                const TARN_JBRT_DOC_INFO expected{{0x11111111, 0x22222222, 0x33333333, 0x44444444}};
                EXPECT_EQ(bytes_of(info), bytes_of(expected));
            },
            [&] {
                const TARN_JBRT_DOC_INFO expected{{5, 6, 7, 8}};
                EXPECT_EQ(bytes_of(info), bytes_of(expected)) << "as it was";
            });
    });
}

TEST_F(common_facade, delete_job_retention_doc)
{
    exercise_text(5, [&](const char* text, const std::string& sent) {
        exercise({1, 76, record(88).u32(72, 0xE1E2E3E4).u32(76, 0xD0D1D2D3).text(80, sent), record(16), 12}, [&] {
            return facade().tarn_delete_job_retention_doc(enumerated<TARN_JBRT_BOX_TYPE>, document_id, text);
        });
    });
}

}  // namespace
