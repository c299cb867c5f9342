#include "simulator/panel.h"

#include "simulator/codec.h"

namespace norvane::simulator {

namespace wire = protocol::panel;

namespace {

constexpr auto soft_tenkey_type = "TARN_PANEL_SOFT_TENKEY_DISPLAY_INFO";

json numbers_by(const std::string& name, const std::map<std::uint32_t, std::uint32_t>& kept, const std::string& value)
{
    json all = json::array();
    for (const auto& [key, number] : kept) all.push_back({{name, key}, {value, number}});
    return all;
}

}  // namespace

panel::panel(const node& device, const environment& shared)
    : codes_(shared.codes), records_(shared.records), observers_(wire::interface_id, shared.messages)
{
    const node own = device["panel"];
    for (const node& entry : own["screens"].elements()) {
        screens_[entry.at("display").number()] = {entry["name"].text_or({}), entry["available"].flag_or(true)};
    }
    first_display_ = own["display"].number_or(0);
    display_ = first_display_;
    if (own["display"] && !screens_.contains(display_)) own.at("display").fail("the display of one of the screens");
    for (const node& entry : own["applications"].elements()) {
        applications_[entry.at("apl_id").text()] = entry.at("id").number();
    }
    for (const node& entry : own["texts"].elements()) {
        texts_[{entry.at("key").text(), entry.at("number").number(), entry.at("type").number()}] =
            entry.at("text").text();
    }
}

void panel::serve(router& router)
{
    observers_.serve<wire::add_observer, wire::remove_observer>(router);
    serve_events(router);
    serve_requests(router);
    serve_texts(router);
    serve_soft_tenkey(router);
    hear<wire::notify_view_update>(router);
    hear<wire::notify_request_event>(router);
    hear<wire::extension_authentication_initialize>(router);
    hear<wire::notify_j_foundation_started>(router);
    hear<wire::notify_reset_end>(router);
    hear<wire::notify_login_complete>(router);
    hear<wire::notify_browser_complete>(router);
    hear<wire::notify_browser_startup_complete>(router);
    hear<wire::notify_panel_resource_result>(router);
    hear<wire::notify_casset_panel_info>(router);
    hear<wire::notify_settable_casset_info>(router);
    hear<wire::notify_copy_service_login_finish>(router);
    hear<wire::set_apl_available_start>(router);
    hear<wire::notify_sleep>(router);
    hear<wire::notify_panel_resource_response>(router);
}

void panel::serve_events(router& router)
{
    // The event's key is the number of the application that tells it.
    router.on<wire::notify_key_event>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        const auto application = applications_.find(get<"apl_id">(request));
        if (application == applications_.end()) return codes_.code("not_found");
        observers_.announce(event_of<wire::key_event>()
                                .template set<"key">(application->second)
                                .template set<"event">(get<"event">(request)));
        return 0U;
    });
    router.on<wire::notify_auto_panel_reset>([this](const auto&, auto&) {
        const std::lock_guard lock(mutex_);
        display_ = first_display_;
        observers_.announce(event_of<wire::auto_panel_reset>());
        return 0U;
    });
    router.on<wire::change_id>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto application = applications_.find(get<"apl_id">(request));
        if (application == applications_.end()) return codes_.code("not_found");
        set<"id">(reply, application->second);
        return 0U;
    });
}

void panel::serve_requests(router& router)
{
    keep<wire::request_buzzer, "target", "type">(router, buzzers_);
    keep<wire::request_start_led, "target", "state">(router, leds_);
    keep<wire::reset_timer_ctrl, "target", "control">(router, timers_);
    keep<wire::request_set_value, "function", "value">(router, settings_);
    keep<wire::menu_application_initialized, "first", "second">(router, menu_);
    router.on<wire::menu_application_terminated>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        return menu_.erase(get<"first">(request)) == 1 ? 0U : codes_.code("not_found");
    });
    router.on<wire::request_display_screen>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        const auto screen = screens_.find(get<"display">(request));
        if (screen == screens_.end()) return codes_.code("unknown_key");
        if (!screen->second.available) return codes_.code("wrong_state");
        display_ = screen->first;
        return 0U;
    });
    router.on<wire::is_screen_available>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto screen = screens_.find(get<"display">(request));
        if (screen == screens_.end()) return codes_.code("unknown_key");
        set<"available">(reply, screen->second.available ? 1 : 0);
        return 0U;
    });
}

void panel::serve_texts(router& router)
{
    router.on<wire::set_display_text>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        texts_[{get<"key">(request), get<"number">(request), get<"type">(request)}] = get<"text">(request);
        return 0U;
    });
    router.on<wire::get_display_text>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto found = texts_.find({get<"key">(request), get<"number">(request), get<"type">(request)});
        if (found == texts_.end()) return codes_.code("unknown_text");
        set<"text">(reply, found->second);
        return 0U;
    });
}

void panel::serve_soft_tenkey(router& router)
{
    router.on<wire::initialize_soft_tenkey>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        soft_tenkeys_[get<"target">(request)] = get<"info">(request);
        return 0U;
    });
    // Only what has been initialized is shown and read.
    router.on<wire::set_soft_tenkey>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        const auto found = soft_tenkeys_.find(get<"target">(request));
        if (found == soft_tenkeys_.end()) return codes_.code("wrong_state");
        found->second = get<"info">(request);
        return 0U;
    });
    router.on<wire::get_soft_tenkey>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto found = soft_tenkeys_.find(get<"target">(request));
        if (found == soft_tenkeys_.end()) return codes_.code("wrong_state");
        set<"info">(reply, found->second);
        return 0U;
    });
}

template <typename Row, fixed_text Key, fixed_text Value>
void panel::keep(router& router, values& kept)
{
    router.on<Row>([this, &kept](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        kept[get<Key>(request)] = get<Value>(request);
        return 0U;
    });
}

template <typename Row>
void panel::hear(router& router)
{
    router.on<Row>([this, described = frame::describe_row<Row>()](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        told& heard = told_[Row::id];
        heard.operation = Row::name;
        ++heard.times;
        heard.last = decode(described.sent, request.record(), records_);
        return 0U;
    });
}

void panel::save(json& device) const
{
    const std::lock_guard lock(mutex_);
    json& texts = device["panel"]["texts"];
    texts = json::array();
    for (const auto& [key, text] : texts_) {
        texts.push_back(
            {{"key", std::get<0>(key)}, {"number", std::get<1>(key)}, {"type", std::get<2>(key)}, {"text", text}});
    }
}

json panel::state() const
{
    json shown = json::object();
    save(shown);
    const std::lock_guard lock(mutex_);
    json screens = json::array();
    for (const auto& [display, screen] : screens_) {
        screens.push_back({{"display", display},
                           {"name", screen.name},
                           {"available", screen.available},
                           {"shown", display == display_}});
    }
    json tenkeys = json::array();
    for (const auto& [target, info] : soft_tenkeys_) {
        tenkeys.push_back({{"target", target}, {"info", records_.describe(soft_tenkey_type, info)}});
    }
    json heard = json::array();
    for (const auto& [id, each] : told_) {
        heard.push_back({{"operation", each.operation}, {"id", id}, {"times", each.times}, {"last", each.last}});
    }
    return {{"screens", std::move(screens)},
            {"texts", std::move(shown["panel"]["texts"])},
            {"leds", numbers_by("target", leds_, "state")},
            {"buzzers", numbers_by("target", buzzers_, "type")},
            {"timers", numbers_by("target", timers_, "control")},
            {"settings", numbers_by("function", settings_, "value")},
            {"menu", numbers_by("first", menu_, "second")},
            {"soft_tenkeys", std::move(tenkeys)},
            {"told", std::move(heard)}};
}

}  // namespace norvane::simulator
