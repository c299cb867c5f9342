// A card at the reader: the story that runs through the accessory, user and panel areas.
#include "story.h"
#include "tarn_acc_facade.h"
#include "tarn_acc_observer.h"
#include "tarn_panel_facade.h"
#include "tarn_panel_observer.h"
#include "tarn_user_facade.h"

#include <algorithm>
#include <chrono>
#include <future>
#include <utility>
#include <vector>

namespace tour {

namespace {

constexpr std::chrono::seconds patience{60};
constexpr unsigned int users_on_a_page = 3;

/// Waits at the reader for one card.
class card_reader : public norvane::tarn_acc_observer {
public:
    explicit card_reader(std::size_t idm_offset) : idm_offset_(idm_offset) {}

    unsigned int notify_iccard_detect(TARN_ACC_ICCARD_INFO& card) override
    {
        if (!std::exchange(held_, true)) card_.set_value(reinterpret_cast<const char*>(&card) + idm_offset_);
        return 0;
    }

    /// The card's identifier; empty if none was held to the reader.
    std::string wait()
    {
        std::future<std::string> card = card_.get_future();
        return card.wait_for(patience) == std::future_status::ready ? card.get() : std::string();
    }

private:
    std::size_t idm_offset_;
    bool held_ = false;
    std::promise<std::string> card_;
};

/// Waits at the panel for one key.
class key_pad : public norvane::tarn_panel_observer {
public:
    using key = std::pair<unsigned int, unsigned int>;

    unsigned int notify_key_event(unsigned int number, TARN_PANEL_KEY_EVENT event) override
    {
        if (!std::exchange(pressed_, true)) key_.set_value({number, event});
        return 0;
    }

    key wait()
    {
        std::future<key> pressed = key_.get_future();
        return pressed.wait_for(patience) == std::future_status::ready ? pressed.get() : key{};
    }

private:
    bool pressed_ = false;
    std::promise<key> key_;
};

/// Where the device's layouts have a record's field.
std::size_t offset_of(const json& device, const char* type, const char* field)
{
    for (const json& each : device.at("layouts").at(type).at("fields")) {
        if (each.at("name") == field) return each.at("offset").get<std::size_t>();
    }
    return 0;
}

std::string text_at(const TARN_USERINFO_RECORD& info, std::size_t offset)
{
    return reinterpret_cast<const char*>(&info) + offset;
}

void list_users(story& story, norvane::tarn_user_facade& users, std::size_t name_offset)
{
    const json& accounts = story.device().at("user").at("accounts");
    unsigned int count = 0;
    unsigned int pages = 0;
    story.succeeded("prepare the list of local users",
                    users.tarn_user_get_local_user_list_prepare(users_on_a_page, count, pages));
    story.expect("local users", std::size_t{count}, accounts.size());
    std::vector<TARN_USERINFO_RECORD> page(50);
    std::size_t listed = 0;
    for (unsigned int number = 1; number <= pages; ++number) {
        unsigned int on_page = 0;
        users.tarn_user_get_local_user_list(number, on_page, page.data());
        for (unsigned int i = 0; i < on_page && listed < accounts.size(); ++i) {
            story.expect(fmt::format("user {} of page {}", i + 1, number), text_at(page[i], name_offset),
                         accounts.at(listed++).at("user").get<std::string>());
        }
    }
    story.expect("users on all pages", listed, accounts.size());
    story.succeeded("finish the list", users.tarn_user_get_local_user_list_finish(users_on_a_page));
}

void charge(story& story, norvane::tarn_acc_facade& reader)
{
    const auto price = story.device().at("acc").at("price").get<unsigned int>();
    const unsigned int limit = reader.tarn_acc_get_price_limit();
    story.expect("may be charged", limit, story.device().at("acc").at("price_limit").get<unsigned int>());
    unsigned char condition[] = "duplex,monochrome";
    reader.tarn_acc_send_start_prepare();
    reader.tarn_acc_send_start();
    story.succeeded("send the condition of two pages", reader.tarn_acc_change_condition(condition, 2));
    story.succeeded("charge the price", reader.tarn_acc_charge_price());
    reader.tarn_acc_send_end();
    reader.tarn_acc_send_end_finish();
    story.expect("may still be charged", reader.tarn_acc_get_price_limit(), limit - price);
}

}  // namespace

void card(story& story)
{
    story.chapter("A card at the reader");
    auto& users = *norvane::tarn_user_facade::tarn_user_get_instance();
    auto& panel = *norvane::tarn_panel_facade::tarn_panel_get_instance();
    auto& reader = *norvane::tarn_acc_facade::tarn_acc_get_instance();
    const json& device = story.device();
    const json& held = device.at("acc").at("cards").at(0);
    const json& accounts = device.at("user").at("accounts");
    const std::size_t name_offset = offset_of(device, "TARN_USERINFO_RECORD", "user");

    card_reader at_reader(offset_of(device, "TARN_ACC_ICCARD_INFO", "idm"));
    story.succeeded("observe the reader", reader.tarn_acc_add_observer(&at_reader));
    story.succeeded("have it read cards",
                    reader.tarn_acc_set_iccard_read_type(held.at("read_type").get<unsigned char>()));
    std::string idm = at_reader.wait();
    reader.tarn_acc_remove_observer(&at_reader);
    const bool known = idm == held.at("card").at("idm").get<std::string>();
    story.expect("the card that is held to it", std::string(known ? "the expected one" : "another one"),
                 std::string("the expected one"));

    const json owner = *std::find_if(accounts.begin(), accounts.end(), [&held](const json& each) {
        return each.contains("idm") && each.at("idm") == held.at("card").at("idm");
    });
    unsigned long cert_id = 0;
    story.succeeded("log its owner in", users.tarn_user_idm_login(idm.data(), &cert_id));
    TARN_USERINFO_RECORD info{};
    users.tarn_user_get_userinfo(static_cast<TARN_USER_USERKIND>(0), info);
    story.expect("who is logged in", text_at(info, name_offset), owner.at("user").get<std::string>());
    char stranger[] = "no such card";
    unsigned long none = 0;
    story.refused("a card that nobody has", users.tarn_user_idm_login(stranger, &none), 0x0200000D);
    story.refused("a wrong password",
                  users.tarn_user_account_login(owner.at("user").get<std::string>(), "wrong",
                                                static_cast<TARN_USER_AUTHMODE>(1), &none),
                  0x02000009);

    const auto type = static_cast<TARN_PANEL_DISPLAY_TEXT_TYPE>(0);
    story.succeeded("show a greeting on the panel", panel.tarn_panel_set_display_text("greeting", 2, "Welcome", type));
    story.succeeded("light the LED", panel.tarn_panel_request_start_led(1, static_cast<TARN_LED_STATE>(1)));
    story.refused("a text that was never set", panel.tarn_panel_get_display_text("greeting", 99, type, nullptr),
                  0x0200000E);
    key_pad at_panel;
    story.succeeded("observe the panel", panel.tarn_panel_add_observer(&at_panel));
    auto application = device.at("panel").at("applications").at(0).at("apl_id").get<std::string>();
    story.succeeded("press a key",
                    panel.tarn_panel_notify_key_event(application.data(), static_cast<TARN_PANEL_KEY_EVENT>(3)));
    const auto [number, event] = at_panel.wait();
    panel.tarn_panel_remove_observer(&at_panel);
    story.expect("the key's application", number,
                 device.at("panel").at("applications").at(0).at("id").get<unsigned int>());
    story.expect("the key's event", event, 3U);

    charge(story, reader);
    list_users(story, users, name_offset);
    story.succeeded("log the user out", users.tarn_user_logout(cert_id));
    story.refused("log out a second time", users.tarn_user_logout(cert_id), 0x02000005);
}

}  // namespace tour
