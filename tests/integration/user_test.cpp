// Logins, rights, hidden accounts and the local user list against the stand-in service, and passwords,
// which nobody is shown.
#include "tarn_user_facade.h"

#include "integration/processes.h"

#include <csignal>
#include <cstring>
#include <set>
#include <vector>

namespace {

using namespace testing_processes;
using norvane::tarn_user_facade;

constexpr unsigned int not_found = 0x02000005;
constexpr unsigned int exists = 0x02000006;
constexpr unsigned int not_prepared = 0x02000008;
constexpr unsigned int wrong_password = 0x02000009;
constexpr unsigned int wrong_state = 0x0200000A;
constexpr unsigned int unknown_user = 0x0200000C;
constexpr unsigned int unknown_card = 0x0200000D;
constexpr auto mode = static_cast<TARN_USER_AUTHMODE>(1);

tarn_user_facade& facade() { return *tarn_user_facade::tarn_user_get_instance(); }

/// A hidden account as the example device lays it out.
TARN_HIDE_USERINFO_RECORD hidden(const std::string& user, const std::string& password, unsigned int rights)
{
    TARN_HIDE_USERINFO_RECORD record{};
    char* const bytes = reinterpret_cast<char*>(&record);
    user.copy(bytes, 128);
    password.copy(bytes + 129, 128);
    std::memcpy(bytes + 260, &rights, sizeof rights);
    return record;
}

unsigned int rights_of(const std::string& user, const std::string& password, unsigned int& result)
{
    auto rights = static_cast<TARN_USER_RIGHTS>(77);
    result = facade().tarn_user_get_rights(user, password, &rights);
    return rights;
}

std::string name_of(const TARN_USERINFO_RECORD& info) { return reinterpret_cast<const char*>(&info); }

class user_service : public process_test {};

TEST_F(user_service, logins_hand_out_certificates_of_their_own)
{
    const process service = start_service();
    unsigned long mori = 0;
    unsigned long novak = 0;
    unsigned long by_extra = 0;
    unsigned long by_card = 0;
    EXPECT_EQ(facade().tarn_user_account_login("mori", "paper-crane", mode, &mori), 0U);
    EXPECT_EQ(facade().tarn_user_account_login("novak", "tall-window", mode, &novak), 0U);
    EXPECT_EQ(facade().tarn_user_account_login("mori", "paper-crane", mode, "east", &by_extra), 0U);
    char card[] = "0114B34D0C1A8801";
    EXPECT_EQ(facade().tarn_user_idm_login(card, &by_card), 0U);
    EXPECT_NE(mori, 0U);
    EXPECT_EQ((std::set<unsigned long>{mori, novak, by_extra, by_card}.size()), 4U);

    EXPECT_EQ(facade().tarn_user_logout(mori), 0U);
    EXPECT_EQ(facade().tarn_user_logout(mori), not_found) << "a certificate is good for one logout";
    EXPECT_EQ(facade().tarn_user_logout_bkg(novak), 0U);
    EXPECT_EQ(facade().tarn_user_logout_bkg(novak), not_found);
    EXPECT_EQ(facade().tarn_user_logout(by_extra), 0U);
    EXPECT_EQ(facade().tarn_user_logout(by_card), 0U);
    EXPECT_EQ(facade().tarn_user_logout(4711), not_found);
}

TEST_F(user_service, who_does_not_know_the_password_is_refused)
{
    const process service = start_service();
    unsigned long cert_id = 5;
    EXPECT_EQ(facade().tarn_user_account_login("mori", "paper-cranes", mode, &cert_id), wrong_password);
    EXPECT_EQ(cert_id, 0U);
    EXPECT_EQ(facade().tarn_user_account_login("mori", "", mode, &cert_id), wrong_password);
    EXPECT_EQ(facade().tarn_user_account_login("mori", "paper-crane", mode, "west", &cert_id), wrong_password);
    EXPECT_EQ(facade().tarn_user_account_login("nobody", "paper-crane", mode, &cert_id), unknown_user);
    EXPECT_EQ(facade().tarn_user_account_login("nobody", "paper-crane", mode, "east", &cert_id), unknown_user);
    char card[] = "FFFFFFFFFFFFFFFF";
    EXPECT_EQ(facade().tarn_user_idm_login(card, &cert_id), unknown_card);
    char no_card[] = "";
    EXPECT_EQ(facade().tarn_user_idm_login(no_card, &cert_id), unknown_card) << "an account without a card has none";
}

TEST_F(user_service, the_device_file_names_the_refusals)
{
    const auto device = write_file("device.json", R"({
  "errors": { "wrong_password": 77, "unknown_user": 78, "unknown_card": 79 },
  "user": { "accounts": [ { "user": "a", "password": "b" } ] }
})");
    const process service = start_service(device);
    unsigned long cert_id = 0;
    char card[] = "1";
    EXPECT_EQ(facade().tarn_user_account_login("a", "c", mode, &cert_id), 77U);
    EXPECT_EQ(facade().tarn_user_account_login("b", "b", mode, &cert_id), 78U);
    EXPECT_EQ(facade().tarn_user_idm_login(card, &cert_id), 79U);
}

TEST_F(user_service, rights_and_information_are_those_of_the_account)
{
    const process service = start_service();
    unsigned int result = 0;
    EXPECT_EQ(rights_of("mori", "paper-crane", result), 0x1FU);
    EXPECT_EQ(result, 0U);
    EXPECT_EQ(rights_of("mori", "wrong", result), 0U);
    EXPECT_EQ(result, wrong_password);
    auto rights = static_cast<TARN_USER_RIGHTS>(0);
    EXPECT_EQ(facade().tarn_user_get_rights("okafor", "quiet-harbour", "north", &rights), 0U);
    EXPECT_EQ(rights, 7U);
    EXPECT_EQ(facade().tarn_user_get_rights("okafor", "quiet-harbour", "south", &rights), wrong_password);

    TARN_USERINFO_RECORD info{};
    EXPECT_EQ(facade().tarn_user_get_userinfo(static_cast<TARN_USER_USERKIND>(1), info), 0U);
    EXPECT_EQ(name_of(info), "mori");
    EXPECT_EQ(facade().tarn_user_get_userinfo(static_cast<TARN_USER_USERKIND>(0), info), wrong_state)
        << "nobody is logged in";
    EXPECT_EQ(name_of(info), "");
    unsigned long cert_id = 0;
    facade().tarn_user_account_login("novak", "tall-window", mode, &cert_id);
    EXPECT_EQ(facade().tarn_user_get_userinfo(static_cast<TARN_USER_USERKIND>(0), info), 0U);
    EXPECT_EQ(name_of(info), "novak");
    EXPECT_EQ(facade().tarn_user_get_userinfo(static_cast<TARN_USER_USERKIND>(9), info), 0x02000003U);
}

TEST_F(user_service, hidden_accounts_are_made_changed_and_removed)
{
    const process service = start_service();
    unsigned int result = 0;
    EXPECT_EQ(rights_of("service", "cold-iron", result), 255U) << "of the device file";
    EXPECT_EQ(facade().tarn_user_create_hide_account(hidden("night", "first", 5)), 0U);
    EXPECT_EQ(facade().tarn_user_create_hide_account(hidden("night", "second", 6)), exists);
    EXPECT_EQ(facade().tarn_user_create_hide_account(hidden("mori", "second", 6)), exists);
    EXPECT_EQ(facade().tarn_user_create_hide_account(hidden("", "second", 6)), unknown_user);
    EXPECT_EQ(rights_of("night", "first", result), 5U);
    EXPECT_EQ(facade().tarn_user_update_hide_account(hidden("night", "second", 6)), 0U);
    EXPECT_EQ(rights_of("night", "second", result), 6U);
    EXPECT_EQ(rights_of("night", "first", result), 0U);
    EXPECT_EQ(result, wrong_password);
    EXPECT_EQ(facade().tarn_user_update_hide_account(hidden("day", "second", 6)), unknown_user);
    EXPECT_EQ(facade().tarn_user_delete_hide_account("night"), 0U);
    EXPECT_EQ(facade().tarn_user_delete_hide_account("night"), unknown_user);
    rights_of("night", "second", result);
    EXPECT_EQ(result, unknown_user);
    EXPECT_EQ(facade().tarn_user_delete_all_hide_account(), 0U);
    rights_of("service", "cold-iron", result);
    EXPECT_EQ(result, unknown_user);
}

TEST_F(user_service, the_local_users_come_page_by_page)
{
    const process service = start_service();
    unsigned int users = 0;
    unsigned int pages = 0;
    EXPECT_EQ(facade().tarn_user_get_local_user_list_finish(3), not_prepared);
    ASSERT_EQ(facade().tarn_user_get_local_user_list_prepare(3, users, pages), 0U);
    EXPECT_EQ(users, 7U);
    EXPECT_EQ(pages, 3U);
    std::vector<std::string> names;
    std::vector<TARN_USERINFO_RECORD> page(50);
    unsigned int count = 0;
    for (const unsigned int expected : {3U, 3U, 1U}) {
        const auto number = static_cast<unsigned int>(names.size() / 3 + 1);
        ASSERT_EQ(facade().tarn_user_get_local_user_list(number, count, page.data()), 0U);
        ASSERT_EQ(count, expected);
        for (unsigned int i = 0; i < count; ++i) names.push_back(name_of(page[i]));
    }
    EXPECT_EQ(names,
              (std::vector<std::string>{"mori", "lindqvist", "okafor", "santos", "novak", "haddad", "kowalska"}));
    EXPECT_EQ(facade().tarn_user_get_local_user_list(4, count, page.data()), 0U);
    EXPECT_EQ(count, 0U) << "there is no fourth page";
    EXPECT_EQ(facade().tarn_user_get_local_user_list_finish(3), 0U);
}

TEST_F(user_service, modes_and_hidden_accounts_are_saved_but_no_password_that_was_sent)
{
    const auto saved = directory() / "saved.json";
    auto kept = static_cast<TARN_USER_AUTHMODE>(0);
    {
        process service = start_service({}, {"--save", saved});
        EXPECT_EQ(facade().tarn_user_get_authentication_mode(&kept), 0U);
        EXPECT_EQ(kept, 1U);
        EXPECT_EQ(facade().tarn_user_set_authentication_mode(static_cast<TARN_USER_AUTHMODE>(2)), 0U);
        EXPECT_EQ(facade().tarn_user_set_func_auth_mode(static_cast<TARN_MODE_10_VAL>(61)), 0U);
        EXPECT_EQ(facade().tarn_user_logout_limit(static_cast<TARN_MODE_10_VAL>(62)), 0U);
        EXPECT_EQ(facade().tarn_user_create_hide_account(hidden("night", "never-written", 5)), 0U);
        EXPECT_EQ(service.stop(SIGTERM), 0);
    }
    const std::string content = read_file(saved);
    EXPECT_NE(content.find("\"night\""), std::string::npos);
    EXPECT_EQ(content.find("never-written"), std::string::npos);
    EXPECT_NE(content.find("cold-iron"), std::string::npos) << "what the device file holds stays";
    EXPECT_NE(content.find("\"func_auth_mode\": 61"), std::string::npos) << content;
    EXPECT_NE(content.find("\"logout_limit\": 62"), std::string::npos);
    const process service = start_service(saved);
    EXPECT_EQ(facade().tarn_user_get_authentication_mode(&kept), 0U);
    EXPECT_EQ(kept, 2U);
}

TEST_F(user_service, nobody_is_shown_a_password)
{
    const auto trace = directory() / "trace.log";
    setenv("TARN_TRACE", trace.c_str(), 1);
    const process service = start_service();
    const auto watched = directory() / "watched.log";
    process watcher("tarnctl", {"watch"}, watched);

    // What is written before the watcher asks for the first time is not decoded: try until it is.
    unsigned long cert_id = 0;
    EXPECT_TRUE(eventually([&] {
        facade().tarn_user_account_login("mori", "paper-crane", mode, &cert_id);
        return read_file(watched).find("tarn_user_account_login") != std::string::npos;
    }));
    facade().tarn_user_account_login("mori", "wrong-secret", mode, "east", &cert_id);
    auto rights = static_cast<TARN_USER_RIGHTS>(0);
    facade().tarn_user_get_rights("mori", "paper-crane", &rights);
    facade().tarn_user_get_rights("mori", "paper-crane", "east", &rights);
    char card[] = "0114B34D0C1A8801";
    facade().tarn_user_idm_login(card, &cert_id);
    facade().tarn_user_create_hide_account(hidden("night", "hidden-secret", 5));
    facade().tarn_user_update_hide_account(hidden("night", "hidden-secret", 6));
    facade().tarn_user_delete_hide_account("night");
    EXPECT_TRUE(
        eventually([&] { return read_file(watched).find("tarn_user_delete_hide_account") != std::string::npos; }));
    watcher.stop(SIGTERM);
    unsetenv("TARN_TRACE");

    EXPECT_NE(read_file(watched).find("\"user\":\"mori\",\"password\":\"***\""), std::string::npos)
        << read_file(watched);
    std::vector<std::filesystem::path> outputs;
    for (const auto& file : std::filesystem::directory_iterator(directory())) {
        if (file.path().extension() == ".log") outputs.push_back(file.path());
    }
    EXPECT_GE(outputs.size(), 2U);
    for (const auto& file : outputs) {
        const std::string content = read_file(file);
        for (const char* const secret : {"paper-crane", "wrong-secret", "hidden-secret", "0114B34D0C1A8801",
                                         // "hidden-secret" in hexadecimal digits
                                         "68696464656e2d736563726574"}) {
            EXPECT_EQ(content.find(secret), std::string::npos) << secret << " in " << file << ":\n" << content;
        }
    }
}

TEST_F(user_service, wrong_accounts_are_explained)
{
    const std::vector<std::pair<std::string, std::string>> wrong = {
        {"{ \"user\": { \"accounts\": [\n { \"password\": \"a\" } ] } }", ":2: /user/accounts/0: expected a member"},
        {"{ \"user\": { \"accounts\": [ { \"user\": \"a\" },\n { \"user\": \"a\" } ] } }",
         ":2: /user/accounts/1/user: expected a name that no other account has"},
        {"{ \"user\": { \"kinds\": [\n { \"kind\": 1, \"user\": \"a\" } ] } }",
         ":2: /user/kinds/0/user: expected the name of an account"},
        {"{ \"user\": { \"hidden_accounts\": [\n \"00\" ] } }", ":2: /user/hidden_accounts/0: expected a name"},
        {"{ \"user\": { \"accounts\": [\n { \"user\": \"" + std::string(130, 'x') + "\" } ] } }",
         ":2: /user/accounts/0/user: expected a text of at most 129 bytes"},
    };
    for (const auto& [content, message] : wrong) {
        const auto file = write_file("wrong.json", content);
        std::string output;
        EXPECT_EQ(run("tarnsim", {file}, output), 1);
        EXPECT_NE(output.find(file.string() + message), std::string::npos) << output;
    }
}

}  // namespace
