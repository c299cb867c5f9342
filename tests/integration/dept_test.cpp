// Departments and their modes against the stand-in service in another process.
#include "tarn_dept_facade.h"

#include "integration/processes.h"

#include <csignal>
#include <cstring>

namespace {

using namespace testing_processes;
using norvane::tarn_dept_facade;

constexpr unsigned int wrong_kind = 0x02000004;
constexpr unsigned int not_found = 0x02000005;
constexpr unsigned int exists = 0x02000006;

tarn_dept_facade& facade() { return *tarn_dept_facade::tarn_dept_get_instance(); }

/// The fields of the example device's layout.
struct department {
    std::string code;
    std::string name;
    unsigned int print_limit = 0;
    unsigned int printed = 0;
    unsigned int copied = 0;
    unsigned int scanned = 0;
};

TARN_DEPT_DEPTINFO record_of(const department& from)
{
    TARN_DEPT_DEPTINFO record{};
    std::memcpy(record.bytes, from.code.data(), from.code.size());
    std::memcpy(record.bytes + 12, from.name.data(), from.name.size());
    std::memcpy(record.bytes + 76, &from.print_limit, 4);
    std::memcpy(record.bytes + 80, &from.printed, 4);
    std::memcpy(record.bytes + 84, &from.copied, 4);
    std::memcpy(record.bytes + 88, &from.scanned, 4);
    record.bytes[479] = 0x5A;
    return record;
}

/// What the service has under the code, or an empty department if it refuses with `not_found`.
department retrieved(const std::string& code)
{
    TARN_DEPT_DEPTINFO record;
    std::memset(record.bytes, 0xEE, sizeof record.bytes);
    const unsigned int result = facade().tarn_dept_retrieve_hide_dept(code, record);
    EXPECT_TRUE(result == 0 || result == not_found) << result;
    department made;
    made.code = reinterpret_cast<const char*>(record.bytes);
    made.name = reinterpret_cast<const char*>(record.bytes) + 12;
    std::memcpy(&made.print_limit, record.bytes + 76, 4);
    std::memcpy(&made.printed, record.bytes + 80, 4);
    std::memcpy(&made.copied, record.bytes + 84, 4);
    std::memcpy(&made.scanned, record.bytes + 88, 4);
    EXPECT_EQ(result == 0, !made.code.empty());
    return made;
}

class dept_service : public process_test {};

TEST_F(dept_service, departments_of_the_device_are_retrieved_by_code)
{
    const process service = start_service();
    const department accounting = retrieved("1001");
    EXPECT_EQ(accounting.code, "1001");
    EXPECT_EQ(accounting.name, "Accounting");
    EXPECT_EQ(accounting.print_limit, 5000U);
    EXPECT_EQ(accounting.printed, 412U);
    EXPECT_EQ(retrieved("2002").name, "Engineering");
    EXPECT_EQ(retrieved("3003").code, "") << "an unknown department";
}

TEST_F(dept_service, a_created_department_has_its_code_and_nothing_else)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_dept_create_hide_dept("3003"), 0U);
    const department made = retrieved("3003");
    EXPECT_EQ(made.code, "3003");
    EXPECT_EQ(made.name, "");
    EXPECT_EQ(made.printed, 0U);
    EXPECT_EQ(facade().tarn_dept_create_hide_dept("3003"), exists);
    EXPECT_EQ(facade().tarn_dept_create_hide_dept("1001"), exists);
    EXPECT_EQ(facade().tarn_dept_create_hide_dept(""), wrong_kind) << "no code";
}

TEST_F(dept_service, nine_bytes_of_a_code_count)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_dept_create_hide_dept("123456789X"), 0U);
    EXPECT_EQ(retrieved("123456789").code, "123456789");
    EXPECT_EQ(facade().tarn_dept_create_hide_dept("123456789Y"), exists);
    EXPECT_EQ(facade().tarn_dept_add_hide_dept(record_of({.code = "123456789Z", .name = "Nobody"})), exists);
}

TEST_F(dept_service, an_added_department_comes_back_whole)
{
    const process service = start_service();
    const TARN_DEPT_DEPTINFO added = record_of({"3003", "Design", 10, 9, 8, 7});
    EXPECT_EQ(facade().tarn_dept_add_hide_dept(added), 0U);
    TARN_DEPT_DEPTINFO record{};
    EXPECT_EQ(facade().tarn_dept_retrieve_hide_dept("3003", record), 0U);
    EXPECT_EQ(std::memcmp(&record, &added, sizeof record), 0);
    EXPECT_EQ(facade().tarn_dept_add_hide_dept(added), exists);
    EXPECT_EQ(facade().tarn_dept_add_hide_dept(TARN_DEPT_DEPTINFO{}), wrong_kind) << "no code";
}

TEST_F(dept_service, an_update_replaces_what_is_there)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_dept_update_hide_dept(record_of({.code = "1001", .name = "Finance"})), 0U);
    EXPECT_EQ(retrieved("1001").name, "Finance");
    EXPECT_EQ(retrieved("1001").print_limit, 0U);
    EXPECT_EQ(facade().tarn_dept_update_hide_dept(record_of({.code = "3003", .name = "Nobody"})), not_found);
}

TEST_F(dept_service, departments_are_deleted_one_by_one_or_all)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_dept_delete_hide_dept("1001"), 0U);
    EXPECT_EQ(facade().tarn_dept_delete_hide_dept("1001"), not_found);
    EXPECT_EQ(retrieved("1001").code, "");
    EXPECT_EQ(retrieved("2002").code, "2002");
    EXPECT_EQ(facade().tarn_dept_create_hide_dept("3003"), 0U);
    EXPECT_EQ(facade().tarn_dept_delete_all_hide_dept(), 0U);
    EXPECT_EQ(retrieved("2002").code, "");
    EXPECT_EQ(retrieved("3003").code, "");
}

TEST_F(dept_service, a_reset_clears_the_counters_of_one_department)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_dept_reset_hide_dept_counter("2002"), 0U);
    const department reset = retrieved("2002");
    EXPECT_EQ(reset.name, "Engineering");
    EXPECT_EQ(reset.print_limit, 20000U) << "a limit is no counter";
    EXPECT_EQ(reset.printed, 0U);
    EXPECT_EQ(reset.copied, 0U);
    EXPECT_EQ(reset.scanned, 0U);
    EXPECT_EQ(retrieved("1001").printed, 412U);
    EXPECT_EQ(facade().tarn_dept_reset_hide_dept_counter("3003"), not_found);
}

TEST_F(dept_service, each_mode_is_kept_for_itself)
{
    const process service = start_service();
    TARN_DEPT_DEPT_MODE mode{};
    TARN_DEPT_MIX_MODE mix{};
    TARN_DEPT_INVALID_DEPT_MODE invalid{};
    TARN_DEPT_LIMIT_ACTION action{};
    const auto expect_modes = [&](unsigned int a, unsigned int b, unsigned int c, unsigned int d) {
        EXPECT_EQ(facade().tarn_dept_get_dept_mode(mode), 0U);
        EXPECT_EQ(facade().tarn_dept_get_mix_mode(mix), 0U);
        EXPECT_EQ(facade().tarn_dept_get_invalid_dept_mode(invalid), 0U);
        EXPECT_EQ(facade().tarn_dept_get_limit_action_mode(action), 0U);
        EXPECT_EQ(mode, a);
        EXPECT_EQ(mix, b);
        EXPECT_EQ(invalid, c);
        EXPECT_EQ(action, d);
    };
    expect_modes(1, 0, 2, 1);
    EXPECT_EQ(facade().tarn_dept_set_dept_mode(static_cast<TARN_DEPT_DEPT_MODE>(11)), 0U);
    EXPECT_EQ(facade().tarn_dept_set_mix_mode(static_cast<TARN_DEPT_MIX_MODE>(12)), 0U);
    EXPECT_EQ(facade().tarn_dept_set_invalid_dept_mode(static_cast<TARN_DEPT_INVALID_DEPT_MODE>(13)), 0U);
    EXPECT_EQ(facade().tarn_dept_set_limit_action_mode(static_cast<TARN_DEPT_LIMIT_ACTION>(0xFFFFFFFF)), 0U);
    expect_modes(11, 12, 13, 0xFFFFFFFF);
}

TEST_F(dept_service, changes_are_saved_on_request)
{
    const auto saved = directory() / "saved.json";
    {
        process service = start_service({}, {"--save", saved});
        EXPECT_EQ(facade().tarn_dept_delete_hide_dept("1001"), 0U);
        EXPECT_EQ(facade().tarn_dept_add_hide_dept(record_of({.code = "3003", .name = "Design", .copied = 6})), 0U);
        EXPECT_EQ(facade().tarn_dept_set_mix_mode(static_cast<TARN_DEPT_MIX_MODE>(3)), 0U);
        EXPECT_EQ(service.stop(SIGTERM), 0);
    }
    const process service = start_service(saved);
    EXPECT_EQ(retrieved("1001").code, "");
    EXPECT_EQ(retrieved("2002").printed, 8110U);
    EXPECT_EQ(retrieved("3003").name, "Design");
    EXPECT_EQ(retrieved("3003").copied, 6U);
    TARN_DEPT_MIX_MODE mix{};
    EXPECT_EQ(facade().tarn_dept_get_mix_mode(mix), 0U);
    EXPECT_EQ(mix, 3U);
}

TEST_F(dept_service, a_wrong_device_file_is_explained)
{
    const std::string layout = R"({ "layouts": { "TARN_DEPT_DEPTINFO": { "fields": [
{ "name": "code", "offset": 0, "type": "text", "size": 12 },
{ "name": "printed", "offset": 80, "type": "u32" } ] } },
"dept": {
)";
    const std::vector<std::pair<std::string, std::string>> wrong = {
        {R"("departments": [ { "printed": 1 } ] } })",
         ":5: /dept/departments/0: expected a department with a text field \"code\""},
        {"\"departments\": [ { \"code\": \"1\" },\n{ \"code\": \"1\" } ] } }",
         ":6: /dept/departments/1: expected a code other than \"1\", which another department has"},
        {R"("counters": ["code"] } })",
         ":5: /dept/counters/0: expected a number field of the layout of TARN_DEPT_DEPTINFO"},
        {R"("mix_mode": "often" } })", ":5: /dept/mix_mode: expected a 32-bit number"},
    };
    for (const auto& [content, message] : wrong) {
        const auto file = write_file("wrong.json", layout + content);
        std::string output;
        EXPECT_EQ(run("tarnsim", {file}, output), 1);
        EXPECT_NE(output.find(file.string() + message), std::string::npos) << output;
    }
}

}  // namespace
