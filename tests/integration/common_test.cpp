// The common facade against the stand-in service: what is stored comes back, what is wrong is refused,
// and lists travel through shared memory, of several kinds and several applications at the same time.
#include "tarn_common_facade.h"

#include "integration/processes.h"

#include <sys/wait.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace testing_processes;
using norvane::tarn_common_facade;

constexpr unsigned int not_found = 0x02000005;
constexpr unsigned int exists = 0x02000006;
constexpr unsigned int not_prepared = 0x02000008;
constexpr unsigned int wrong_password = 0x02000009;
constexpr unsigned int wrong_state = 0x0200000A;

constexpr unsigned long contracts = 2;
constexpr const char* contracts_text = "quill-42";

tarn_common_facade& facade() { return *tarn_common_facade::tarn_common_get_instance(); }

template <typename Record>
std::string text_at(const Record& record, std::size_t offset)
{
    return reinterpret_cast<const char*>(&record) + offset;
}

template <typename Record>
unsigned int word_at(const Record& record, std::size_t offset)
{
    unsigned int word = 0;
    std::memcpy(&word, reinterpret_cast<const char*>(&record) + offset, sizeof word);
    return word;
}

template <typename Record>
void put_word(Record& record, std::size_t offset, unsigned int word)
{
    std::memcpy(record.bytes + offset, &word, sizeof word);
}

template <typename Record>
void put_text(Record& record, std::size_t offset, const std::string& text)
{
    std::memcpy(record.bytes + offset, text.c_str(), text.size() + 1);
}

/// All ids of a list of one page.
template <typename Element, typename Get>
std::vector<unsigned int> ids_of(Get get, unsigned int block = 1)
{
    std::vector<Element> page(100);
    unsigned int count = 0;
    EXPECT_EQ(get(block, count, page.data()), 0U);
    std::vector<unsigned int> ids;
    for (unsigned int i = 0; i < count; ++i) ids.push_back(word_at(page[i], 0));
    return ids;
}

std::vector<unsigned int> box_ids(unsigned int block = 1)
{
    return ids_of<TARN_BOX_LIST_INFO>(
        [](auto blk, auto& count, auto* page) { return facade().tarn_get_box_list_info(blk, count, page); }, block);
}

std::vector<unsigned int> document_ids(unsigned int block = 1)
{
    return ids_of<TARN_DOC_INFO>(
        [](auto blk, auto& count, auto* page) { return facade().tarn_get_document_info(blk, count, page); }, block);
}

using ids = std::vector<unsigned int>;

class common_service : public process_test {
protected:
    unsigned int first = 0;
    unsigned int second = 0;
    unsigned int count = 0;
};

TEST_F(common_service, boxes_are_stored_and_come_back)
{
    const process service = start_service();
    TARN_BOX_DETAIL_INFO info{};
    put_text(info, 4, "Press");
    put_text(info, 100, "secret");
    put_word(info, 120, 1000);
    EXPECT_EQ(facade().tarn_add_box(info), 0U);
    put_word(info, 0, 8);
    EXPECT_EQ(facade().tarn_add_box(info), exists) << "it was added as the next after 7";

    TARN_BOX_DETAIL_INFO read{};
    EXPECT_EQ(facade().tarn_get_box_detail_info(8, "secret", read), 0U);
    EXPECT_EQ(std::memcmp(&read, &info, sizeof info), 0);
    put_text(info, 4, "Press office");
    EXPECT_EQ(facade().tarn_update_box_info(8, "guess", info), wrong_password);
    EXPECT_EQ(facade().tarn_update_box_info(8, "secret", info), 0U);
    EXPECT_EQ(facade().tarn_get_box_detail_info_bkg(8, "secret", 5, read), 0U);
    EXPECT_EQ(text_at(read, 4), "Press office");
    EXPECT_EQ(facade().tarn_update_box_info_bkg(8, "secret", 5, info), 0U);

    EXPECT_EQ(facade().tarn_delete_box(8, "guess"), wrong_password);
    EXPECT_EQ(facade().tarn_delete_box(8, "secret"), 0U);
    EXPECT_EQ(facade().tarn_get_box_detail_info(8, "secret", read), not_found);
    EXPECT_EQ(facade().tarn_add_box_bkg(info, 5), 0U);
    EXPECT_EQ(facade().tarn_delete_box_bkg(8, "secret", 5), 0U);
    EXPECT_EQ(facade().tarn_delete_box_bkg(8, "secret", 5), not_found);
}

TEST_F(common_service, a_password_counts_as_far_as_its_text_is_sent)
{
    const process service = start_service();
    TARN_BOX_DETAIL_INFO info{};
    EXPECT_EQ(facade().tarn_get_box_detail_info(3, "0123456789abcdefg", info), 0U) << "17 bytes of 18";
    EXPECT_EQ(facade().tarn_get_box_detail_info(3, "0123456789abcdefgh", info), 0U) << "of which 17 are sent";
    EXPECT_EQ(facade().tarn_get_box_detail_info(3, "0123456789abcdef", info), wrong_password);
    EXPECT_EQ(facade().tarn_get_box_detail_info(1, "anything", info), 0U) << "a box without a password";
}

TEST_F(common_service, documents_take_room_until_they_are_deleted)
{
    const process service = start_service();
    unsigned long capacity = 0;
    EXPECT_EQ(facade().tarn_get_box_available_capacity(contracts, capacity), 0U);
    EXPECT_EQ(capacity, 8192UL - 740 - 215 - 1480 - 40 - 366);
    EXPECT_EQ(facade().tarn_delete_document(contracts, "guess", 203), wrong_password);
    EXPECT_EQ(facade().tarn_delete_document(contracts, contracts_text, 203), 0U);
    EXPECT_EQ(facade().tarn_delete_document(contracts, contracts_text, 203), not_found);
    EXPECT_EQ(facade().tarn_delete_document_bkg(contracts, contracts_text, 201, 5), 0U);
    EXPECT_EQ(facade().tarn_get_box_available_capacity_bkg(contracts, 5, capacity), 0U);
    EXPECT_EQ(capacity, 8192UL - 215 - 40 - 366);
    EXPECT_EQ(facade().tarn_get_box_available_capacity(99, capacity), not_found);
}

TEST_F(common_service, fax_boxes_are_stored_and_come_back)
{
    const process service = start_service();
    TARN_FAX_BOX_DETAIL_INFO info{};
    EXPECT_EQ(facade().tarn_get_fax_box_detail_info(1, "guess", info), wrong_password);
    EXPECT_EQ(facade().tarn_get_fax_box_detail_info(1, "fax-1", info), 0U);
    EXPECT_EQ(text_at(info, 4), "Orders");
    put_text(info, 4, "Bookings");
    EXPECT_EQ(facade().tarn_update_fax_box_info(1, "fax-1", info), 0U);
    EXPECT_EQ(facade().tarn_add_fax_box(info), exists);
    put_word(info, 0, 9);
    EXPECT_EQ(facade().tarn_add_fax_box(info), 0U);
    TARN_FAX_BOX_DETAIL_INFO read{};
    EXPECT_EQ(facade().tarn_get_fax_box_detail_info(9, "fax-1", read), 0U);
    EXPECT_EQ(text_at(read, 4), "Bookings");
    EXPECT_EQ(facade().tarn_delete_fax_box(9, "fax-1"), 0U);
    EXPECT_EQ(facade().tarn_delete_fax_box(9, "fax-1"), not_found);
    EXPECT_EQ(facade().tarn_delete_fax_document(1, "fax-1", 12), 0U);
    EXPECT_EQ(facade().tarn_delete_fax_document(1, "fax-1", 12), not_found);

    EXPECT_EQ(facade().tarn_get_fax_document_list_prepare(1, "fax-1", 0, first, second), 0U);
    EXPECT_EQ(ids_of<TARN_FAX_DOC_LIST>([](auto blk, auto& counted, auto* page) {
                  return facade().tarn_get_fax_document_list(blk, counted, page);
              }),
              (ids{11, 13}));
    EXPECT_EQ(facade().tarn_get_fax_document_list_finish(first), 0U);
    EXPECT_EQ(facade().tarn_get_fax_box_list_prepare(0, first, second), 0U);
    EXPECT_EQ(ids_of<TARN_FAX_BOX_LIST>([](auto blk, auto& counted, auto* page) {
                  return facade().tarn_get_fax_box_list(blk, counted, page);
              }),
              (ids{1, 2}));
    EXPECT_EQ(facade().tarn_get_fax_box_list_finish(first), 0U);
}

TEST_F(common_service, easy_documents_are_found_by_their_path)
{
    const process service = start_service();
    std::vector<TARN_EASY_BOX_INFO> page(50);
    EXPECT_EQ(facade().tarn_get_easy_box_info_prepare("/forms", 10, first, second), 0U);
    EXPECT_EQ(first, 2U);
    EXPECT_EQ(facade().tarn_get_easy_box_info(1, count, page.data()), 0U);
    ASSERT_EQ(count, 2U);
    EXPECT_EQ(text_at(page[0], 1532), "Request for leave");
    EXPECT_EQ(text_at(page[1], 0), "/forms/travel.pdf");
    EXPECT_EQ(facade().tarn_get_easy_box_info_finish(first), 0U);

    EXPECT_EQ(facade().tarn_delete_easy_document("/forms/travel.pdf"), 0U);
    EXPECT_EQ(facade().tarn_delete_easy_document("/forms/travel.pdf"), not_found);
    EXPECT_EQ(facade().tarn_get_easy_box_info_prepare("/forms", 10, first, second), 0U);
    EXPECT_EQ(first, 1U);
    EXPECT_EQ(facade().tarn_get_easy_box_info_finish(first), 0U);
}

TEST_F(common_service, retained_jobs_are_read_and_deleted)
{
    const process service = start_service();
    const auto first_kind = static_cast<TARN_JBRT_BOX_TYPE>(1);
    TARN_JBRT_DOC_INFO info{{1, 2, 3, 4}};
    EXPECT_EQ(facade().tarn_get_job_retention_doc_info(31, "4711", info), 0U);
    EXPECT_EQ(info.words[0], 31U);
    EXPECT_EQ(info.words[1], 45U);
    EXPECT_EQ(info.words[2], 1U);
    EXPECT_EQ(info.words[3], 1792400031U);
    EXPECT_EQ(facade().tarn_get_job_retention_doc_info(31, "4712", info), wrong_password);
    EXPECT_EQ(facade().tarn_get_job_retention_doc_info(99, "", info), not_found);
    EXPECT_EQ(facade().tarn_delete_job_retention_doc(first_kind, 33, ""), not_found) << "it is of the other kind";
    EXPECT_EQ(facade().tarn_delete_job_retention_doc(first_kind, 31, "4712"), wrong_password);
    EXPECT_EQ(facade().tarn_delete_job_retention_doc(first_kind, 31, "4711"), 0U);

    EXPECT_EQ(facade().tarn_get_job_retention_doc_list_prepare(first_kind, 10, first, second), 0U);
    EXPECT_EQ(ids_of<TARN_JBRT_DOC_LIST>([](auto blk, auto& counted, auto* page) {
                  return facade().tarn_get_job_retention_doc_list(blk, counted, page);
              }),
              (ids{32}));
    EXPECT_EQ(facade().tarn_get_job_retention_doc_list_finish(first), 0U);
}

TEST_F(common_service, power_and_state)
{
    const process service = start_service();
    const auto asleep = static_cast<TARN_STS_SLEEP>(3);
    int allowed = 0;
    EXPECT_EQ(facade().tarn_check_allowed_to_be_deep_sleep_mode(allowed), 0U);
    EXPECT_EQ(allowed, 1);
    EXPECT_EQ(facade().tarn_suspend_deep_sleep(4), 0U);
    EXPECT_EQ(facade().tarn_check_allowed_to_be_deep_sleep_mode(allowed), 0U);
    EXPECT_EQ(allowed, 0);
    EXPECT_EQ(facade().tarn_resume_deep_sleep(5), not_found);
    EXPECT_EQ(facade().tarn_resume_deep_sleep(4), 0U);
    EXPECT_EQ(facade().tarn_request_save_mode_prohibition(1), 0U);
    facade().tarn_check_allowed_to_be_deep_sleep_mode(allowed);
    EXPECT_EQ(allowed, 0);
    EXPECT_EQ(facade().tarn_request_energy_saving_mode(asleep), wrong_state);
    EXPECT_EQ(facade().tarn_request_save_mode_prohibition(0), 0U);
    EXPECT_EQ(facade().tarn_request_energy_saving_mode(asleep), 0U);

    EXPECT_EQ(facade().tarn_get_wakeup_date(), 1792569600U);
    EXPECT_EQ(facade().tarn_set_wakeup_date(1, 1800000000L), 0U);
    EXPECT_EQ(facade().tarn_get_wakeup_date(), 1800000000U);

    EXPECT_EQ(facade().tarn_check_eweb_cert_info("A001-44D2-19BC-0E6F"), 0U);
    EXPECT_EQ(facade().tarn_check_eweb_cert_info("A001-44D2-19BC-0E6E"), not_found);
    TARN_JAVAVM_STATE state{};
    EXPECT_EQ(facade().tarn_check_javavm_status(state), 0U);
    EXPECT_EQ(static_cast<unsigned int>(state), 2U);
}

TEST_F(common_service, an_application_that_is_gone_keeps_nobody_awake)
{
    const process service = start_service();
    int allowed = 1;
    // A child process of its own suspends deep sleep and ends.
    const pid_t child = fork();
    if (child == 0) _exit(facade().tarn_suspend_deep_sleep(1) == 0 ? 0 : 1);
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(facade().tarn_check_allowed_to_be_deep_sleep_mode(allowed), 0U);
    EXPECT_EQ(allowed, 1);
}

TEST_F(common_service, a_long_list_comes_page_by_page)
{
    const process service = start_service();
    ASSERT_EQ(facade().tarn_get_personal_address_list_prepare(20, first, second), 0U);
    EXPECT_EQ(first, 45U);
    EXPECT_EQ(second, 3U);
    std::vector<TARN_PERSONAL_ADDRESS> page(20);
    unsigned int seen = 0;
    for (const unsigned int expected : {20U, 20U, 5U, 0U}) {
        EXPECT_EQ(facade().tarn_get_personal_address_list(seen / 20 + (expected == 0 ? 2 : 1), count, page.data()), 0U);
        EXPECT_EQ(count, expected);
        for (unsigned int i = 0; i < count; ++i) EXPECT_EQ(word_at(page[i], 0), ++seen);
    }
    EXPECT_EQ(text_at(page[4], 4), "Tomasz Thea");
    EXPECT_EQ(facade().tarn_get_personal_address_list_finish(first), 0U);
    EXPECT_EQ(facade().tarn_get_personal_address_list(1, count, page.data()), 0x04010207U) << "the partition is gone";
}

TEST_F(common_service, a_page_has_no_more_than_its_capacity)
{
    const process service = start_service();
    std::vector<TARN_PERSONAL_ADDRESS> page(20);
    ASSERT_EQ(facade().tarn_get_personal_address_list_prepare(1000, first, second), 0U);
    EXPECT_EQ(second, 3U);
    EXPECT_EQ(facade().tarn_get_personal_address_list(1, count, page.data()), 0U);
    EXPECT_EQ(count, 20U);
    EXPECT_EQ(facade().tarn_get_personal_address_list_finish(first), 0U);
    ASSERT_EQ(facade().tarn_get_personal_address_list_prepare(7, first, second), 0U);
    EXPECT_EQ(second, 7U);
    EXPECT_EQ(facade().tarn_get_personal_address_list(7, count, page.data()), 0U);
    EXPECT_EQ(count, 3U);
    EXPECT_EQ(facade().tarn_get_personal_address_list_finish(first), 0U);
}

TEST_F(common_service, groups_and_their_members)
{
    const process service = start_service();
    ASSERT_EQ(facade().tarn_get_group_address_list_prepare(20, first, second), 0U);
    EXPECT_EQ(ids_of<TARN_GROUP_ADDRESS>([](auto blk, auto& counted, auto* page) {
                  return facade().tarn_get_group_address_list(blk, counted, page);
              }),
              (ids{1, 2, 3, 4}));
    EXPECT_EQ(facade().tarn_get_group_address_list_finish(first), 0U);

    std::vector<TARN_GROUP_MEMBER> members(20);
    ASSERT_EQ(facade().tarn_get_group_member_address_list_grp_mem_str_prepare(1, 20, first, second), 0U);
    EXPECT_EQ(facade().tarn_get_group_member_address_list(1, count, members.data()), 0U);
    ASSERT_EQ(count, 3U);
    EXPECT_EQ(text_at(members[2], 4), "Weber Wanda") << "the 23rd person";
    EXPECT_EQ(facade().tarn_get_group_member_address_list_finish(first), 0U);

    std::vector<TARN_PERSONAL_ADDRESS> addresses(20);
    ASSERT_EQ(facade().tarn_get_group_member_address_list_prepare(3, 20, first, second), 0U);
    EXPECT_EQ(second, 3U);
    EXPECT_EQ(facade().tarn_get_group_member_address_list(3, count, addresses.data()), 0U);
    EXPECT_EQ(count, 5U);
    EXPECT_EQ(facade().tarn_get_group_member_address_list_finish(first), 0U);

    EXPECT_EQ(facade().tarn_get_group_member_address_list_prepare(9, 20, first, second), not_found);
    EXPECT_EQ(facade().tarn_get_group_member_address_list_prepare(4, 20, first, second), 0U);
    EXPECT_EQ(second, 0U) << "nobody is in it";
    EXPECT_EQ(facade().tarn_get_group_member_address_list_finish(first), 0U);
}

TEST_F(common_service, searches_with_and_without_a_name)
{
    const process service = start_service();
    const auto persons = [](auto blk, auto& counted, auto* page) {
        return facade().tarn_search_personal_address_list(blk, "OV", counted, page);
    };
    const auto groups = [](auto blk, auto& counted, auto* page) {
        return facade().tarn_search_group_address_list(blk, "sh", counted, page);
    };
    ASSERT_EQ(facade().tarn_search_personal_address_list_prepare(20, "OV", first, second), 0U);
    EXPECT_EQ(first, 3U) << "Kovac, Novak and Ivanov";
    EXPECT_EQ(second, 1U);
    EXPECT_EQ(ids_of<TARN_PERSONAL_ADDRESS>(persons), (ids{11, 14, 35}));
    EXPECT_EQ(facade().tarn_search_personal_address_list_finish(first), 0U);
    ASSERT_EQ(facade().tarn_search_personal_address_list_prepare(20, first, second), 0U);
    EXPECT_EQ(first, 45U);
    EXPECT_EQ(ids_of<TARN_PERSONAL_ADDRESS>(persons), (ids{11, 14, 35})) << "the page says what is searched for";
    EXPECT_EQ(facade().tarn_search_personal_address_list_finish(first), 0U);

    ASSERT_EQ(facade().tarn_search_group_address_list_prepare(20, "sh", first, second), 0U);
    EXPECT_EQ(ids_of<TARN_GROUP_ADDRESS>(groups), (ids{2, 4}));
    EXPECT_EQ(facade().tarn_search_group_address_list_finish(first), 0U);
    ASSERT_EQ(facade().tarn_search_group_address_list_prepare(20, first, second), 0U);
    EXPECT_EQ(first, 4U);
    EXPECT_EQ(ids_of<TARN_GROUP_ADDRESS>(groups), (ids{2, 4}));
    EXPECT_EQ(facade().tarn_search_group_address_list_finish(first), 0U);
}

TEST_F(common_service, lists_of_different_kinds_are_open_together)
{
    const process service = start_service();
    std::vector<TARN_EASY_BOX_INFO> easy(50);
    ASSERT_EQ(facade().tarn_get_box_info_prepare(0, first, second), 0U);
    ASSERT_EQ(facade().tarn_get_document_info_prepare(contracts, contracts_text, 0, first, second), 0U);
    ASSERT_EQ(facade().tarn_get_easy_box_info_prepare("/notices", 0, first, second), 0U);
    ASSERT_EQ(facade().tarn_get_personal_address_list_prepare(20, first, second), 0U);
    ASSERT_EQ(facade().tarn_get_group_member_address_list_grp_mem_str_prepare(2, 20, first, second), 0U);

    const ids boxes = {1, 2, 3, 7};
    const ids documents = {201, 202, 203, 204, 205};
    EXPECT_EQ(box_ids(), boxes);
    EXPECT_EQ(document_ids(), documents);
    // Three kinds are finished by one and the same operation of the service; each finish leaves the others.
    EXPECT_EQ(facade().tarn_get_box_info_finish(1), 0U);
    EXPECT_EQ(document_ids(), documents);
    EXPECT_EQ(facade().tarn_get_easy_box_info(1, count, easy.data()), 0U);
    EXPECT_EQ(count, 1U);
    EXPECT_EQ(facade().tarn_get_easy_box_info_finish(1), 0U);
    EXPECT_EQ(document_ids(), documents);

    std::vector<TARN_PERSONAL_ADDRESS> persons(20);
    std::vector<TARN_GROUP_MEMBER> members(20);
    EXPECT_EQ(facade().tarn_get_group_member_address_list(1, count, members.data()), 0U);
    EXPECT_EQ(count, 6U);
    EXPECT_EQ(facade().tarn_get_personal_address_list(3, count, persons.data()), 0U);
    EXPECT_EQ(count, 5U);
    EXPECT_EQ(facade().tarn_get_group_member_address_list_finish(1), 0U);
    EXPECT_EQ(facade().tarn_get_personal_address_list(2, count, persons.data()), 0U);
    EXPECT_EQ(facade().tarn_get_personal_address_list_finish(1), 0U);
    EXPECT_EQ(facade().tarn_get_document_info_finish(1), 0U);
    EXPECT_EQ(facade().tarn_get_box_list_info(1, count, nullptr), 0x04010207U) << "the last finish deleted it";
}

TEST_F(common_service, prepares_and_pages_for_background_work)
{
    const process service = start_service();
    ASSERT_EQ(facade().tarn_get_box_info_prepare_bkg(2, 5, first, second), 0U);
    EXPECT_EQ(first, 4U);
    EXPECT_EQ(second, 2U);
    EXPECT_EQ(box_ids(2), (ids{3, 7}));
    EXPECT_EQ(facade().tarn_get_box_info_finish(first), 0U);
    EXPECT_EQ(facade().tarn_get_document_info_prepare_bkg(contracts, "guess", 2, 5, first, second), wrong_password);
    ASSERT_EQ(facade().tarn_get_document_info_prepare_bkg(contracts, contracts_text, 2, 5, first, second), 0U);
    EXPECT_EQ(document_ids(3), (ids{205}));
    EXPECT_EQ(facade().tarn_get_document_info_finish(first), 0U);
}

TEST_F(common_service, a_list_that_was_not_prepared_is_refused)
{
    const process service = start_service();
    ASSERT_EQ(facade().tarn_get_box_info_prepare(0, first, second), 0U);
    EXPECT_EQ(facade().tarn_get_document_info(1, count, nullptr), not_prepared);
    EXPECT_EQ(facade().tarn_get_box_info_finish(first), 0U);
    EXPECT_EQ(facade().tarn_get_box_info_finish(first), not_prepared);
    EXPECT_EQ(facade().tarn_get_personal_address_list_finish(first), not_prepared);
}

TEST_F(common_service, two_applications_page_the_same_kind_of_list)
{
    const process service = start_service();
    process one("common_application", {"page", "40"});
    process other("common_application", {"page", "40"});
    EXPECT_EQ(one.wait(), 0);
    EXPECT_EQ(other.wait(), 0);
}

TEST_F(common_service, what_a_killed_application_left_is_removed)
{
    const process service = start_service();
    const auto output = (directory() / "holder.log").string();
    process holder("common_application", {"hold"}, output);
    ASSERT_TRUE(eventually([&] { return read_file(output).find("holding") != std::string::npos; }));
    const auto left = directory() / "partitions" / (std::to_string(holder.id()) + ".TARN_DATA_ADDRESS_PARTITION");
    EXPECT_TRUE(std::filesystem::exists(left));
    holder.stop(SIGKILL);
    EXPECT_TRUE(eventually([&] { return !std::filesystem::exists(left); })) << "by the service";
    process next("common_application", {"page", "1"});
    EXPECT_EQ(next.wait(), 0);
}

TEST_F(common_service, the_next_application_removes_what_is_left_without_a_service)
{
    const auto output = (directory() / "holder.log").string();
    process service = start_service();
    process holder("common_application", {"hold"}, output);
    ASSERT_TRUE(eventually([&] { return read_file(output).find("holding") != std::string::npos; }));
    const auto left = directory() / "partitions" / (std::to_string(holder.id()) + ".TARN_DATA_ADDRESS_PARTITION");
    service.stop(SIGKILL);
    holder.stop(SIGKILL);
    EXPECT_TRUE(std::filesystem::exists(left));
    void* part = nullptr;
    ASSERT_EQ(emwOSWIpcCreateMemPart(&part, "TEST_PARTITION", 100), 0U);
    EXPECT_FALSE(std::filesystem::exists(left));
    EXPECT_EQ(emwOSWIpcDeleteMemPart(part), 0U);
}

TEST_F(common_service, changes_are_saved_on_request)
{
    const auto saved = directory() / "saved.json";
    {
        process service = start_service({}, {"--save", saved});
        EXPECT_EQ(facade().tarn_delete_document(contracts, contracts_text, 201), 0U);
        EXPECT_EQ(facade().tarn_delete_easy_document("/forms/leave.pdf"), 0U);
        EXPECT_EQ(facade().tarn_delete_job_retention_doc(static_cast<TARN_JBRT_BOX_TYPE>(2), 33, ""), 0U);
        EXPECT_EQ(facade().tarn_set_wakeup_date(2, 77), 0U);
        EXPECT_EQ(service.stop(SIGTERM), 0);
    }
    const process service = start_service(saved);
    EXPECT_EQ(facade().tarn_get_wakeup_date(), 77U);
    EXPECT_EQ(facade().tarn_delete_document(contracts, contracts_text, 201), not_found);
    EXPECT_EQ(facade().tarn_delete_document(contracts, contracts_text, 202), 0U);
    EXPECT_EQ(facade().tarn_delete_easy_document("/forms/leave.pdf"), not_found);
    TARN_JBRT_DOC_INFO info{};
    EXPECT_EQ(facade().tarn_get_job_retention_doc_info(33, "", info), not_found);
    EXPECT_EQ(facade().tarn_get_job_retention_doc_info(31, "4712", info), wrong_password);
}

TEST_F(common_service, a_wrong_device_file_is_explained)
{
    const std::string layouts =
        R"("layouts": {"TARN_BOX_DETAIL_INFO": {"fields": [{"name": "id", "offset": 0, "type": "u32"}]},
  "TARN_PERSONAL_ADDRESS": {"fields": [{"name": "id", "offset": 0, "type": "u32"}]}},)";
    const std::vector<std::pair<std::string, std::string>> wrong = {
        {R"({"common": {"boxes": [{"info": {"id": 1}}]}})",
         "/common/boxes/0/info/id: expected a field of the layout of TARN_BOX_DETAIL_INFO"},
        {"{" + layouts + R"("common": {"boxes": [{"info": {"id": 0}}]}})",
         ":2: /common/boxes/0/info: expected an \"id\" that is not 0 and that no other box has"},
        {"{" + layouts + R"("common": {"boxes": [{"info": {"id": 1}}, {"info": {"id": 1}}]}})",
         "/common/boxes/1/info: expected an \"id\" that is not 0 and that no other box has"},
        {"{" + layouts + R"("common": {"personal_addresses": [{"id": 1}, {"id": 1}]}})",
         "/common/personal_addresses/1: expected an \"id\" of its own"},
        {"{" + layouts + R"("common": {"groups": [{"info": "00", "members": [5]}]}})",
         "/common/groups/0/members/0: expected the \"id\" of one of the personal_addresses"},
    };
    for (const auto& [content, message] : wrong) {
        const auto file = write_file("wrong.json", content);
        std::string output;
        EXPECT_EQ(run("tarnsim", {file}, output), 1);
        EXPECT_NE(output.find(message), std::string::npos) << output;
    }
}

TEST_F(common_service, the_example_of_lists_prints_the_address_book)
{
    const process service = start_service();
    std::string output;
    EXPECT_EQ(run("common_lists_example", {}, output), 0);
    EXPECT_EQ(output.find("45 persons on 3 pages\n  page 1: Abel Adele\n"), 0U) << output;
    EXPECT_NE(output.find("  page 3: Tomasz Thea\n"), std::string::npos) << output;
    EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 46);
}

}  // namespace
