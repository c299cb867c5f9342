#include "simulator/acc.h"

namespace norvane::simulator {

namespace wire = protocol::acc;

namespace {

constexpr std::size_t device_info_size = wire::get_iccard_device_info::reply::field<"info">::width;

constexpr const char* stage_names[] = {"none", "prepared", "started", "ended"};

}  // namespace

acc::acc(const node& device, const environment& shared)
    : codes_(shared.codes), observers_(wire::interface_id, shared.messages)
{
    const node own = device["acc"];
    status_ = own["status"].number_or(0);
    device_info_ = shared.records.fill("TARN_ACC_ICCARD_DEVICE_INFO", device_info_size, own["device_info"]);
    read_type_ = own["read_type"].number_or(0);
    felica_read_type_ = own["felica_read_type"].number_or(0);
    for (const node& entry : own["cards"].elements()) {
        cards_[entry.at("read_type").number()] =
            shared.records.fill("TARN_ACC_ICCARD_INFO", open_ended_record, entry.at("card"));
    }
    for (const node& entry : own["felica"].elements()) {
        felica_[entry.at("site").number()] = {entry["first_string"].text_or({}), entry["second_string"].text_or({}),
                                              entry["third_string"].text_or({}), entry["first_byte"].number_or(0),
                                              entry["second_byte"].number_or(0)};
    }
    price_ = own["price"].number_or(0);
    price_limit_ = own["price_limit"].number_or(0);
}

void acc::serve(router& router)
{
    observers_.serve<wire::add_observer, wire::remove_observer>(router);
    serve_reader(router);
    serve_felica(router);
    serve_sessions(router);
    serve_charging(router);
}

void acc::serve_reader(router& router)
{
    router.on<wire::get_rw_status>([this](const auto&, auto& reply) {
        set<"status">(reply, status_);
        return 0U;
    });
    router.on<wire::get_iccard_device_info>([this](const auto&, auto& reply) {
        set<"info">(reply, device_info_);
        return 0U;
    });
    router.on<wire::set_iccard_read_type>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        read_type_ = get<"type">(request);
        const auto card = cards_.find(read_type_);
        if (card != cards_.end()) {
            observers_.announce(event_of<wire::iccard_detect>().template set<"card">(card->second));
        }
        return 0U;
    });
}

void acc::serve_felica(router& router)
{
    router.on<wire::set_felica_info>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        felica_[get<"site">(request)] = {get<"first_string">(request), get<"second_string">(request),
                                         get<"third_string">(request), get<"first_byte">(request),
                                         get<"second_byte">(request)};
        return 0U;
    });
    router.on<wire::get_felica_info>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto found = felica_.find(get<"site">(request));
        if (found == felica_.end()) return codes_.code("unknown_key");
        const felica& settings = found->second;
        set<"first_string">(reply, settings.first_string);
        set<"second_string">(reply, settings.second_string);
        set<"third_string">(reply, settings.third_string);
        set<"first_byte">(reply, settings.first_byte);
        set<"second_byte">(reply, settings.second_byte);
        return 0U;
    });
    router.on<wire::set_felica_read_type>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        felica_read_type_ = get<"type">(request);
        return 0U;
    });
}

void acc::serve_sessions(router& router)
{
    router.on<wire::send_start_prepare>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        // A session whose application is gone ends with it.
        if (session_ != session::none && host::alive(owner_)) return codes_.code("wrong_state");
        session_ = session::prepared;
        owner_ = request.process();
        condition_.clear();
        send_page_num_ = 0;
        return 0U;
    });
    step<wire::send_start>(router, session::prepared, session::started);
    step<wire::send_end>(router, session::started, session::ended);
    step<wire::send_end_finish>(router, session::ended, session::none);
    router.on<wire::change_condition>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        if (session_ != session::started || owner_ != request.process()) return codes_.code("wrong_state");
        condition_ = get<"condition">(request);
        send_page_num_ = get<"send_page_num">(request);
        return 0U;
    });
}

template <typename Row>
void acc::step(router& router, session from, session to)
{
    router.on<Row>([this, from, to](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        if (session_ != from || owner_ != request.process()) return codes_.code("wrong_state");
        session_ = to;
        return 0U;
    });
}

void acc::serve_charging(router& router)
{
    router.on<wire::charge_price>([this](const auto&, auto&) {
        const std::lock_guard lock(mutex_);
        if (price_ > price_limit_) return codes_.code("over_limit");
        price_limit_ -= price_;
        return 0U;
    });
    // The limit travels in the place of the result.
    router.on<wire::get_price_limit>([this](const auto&, auto&) {
        const std::lock_guard lock(mutex_);
        return price_limit_;
    });
}

void acc::save(json& device) const
{
    const std::lock_guard lock(mutex_);
    json& own = device["acc"];
    own["read_type"] = read_type_;
    own["felica_read_type"] = felica_read_type_;
    own["felica"] = json::array();
    for (const auto& [site, settings] : felica_) {
        own["felica"].push_back({{"site", site},
                                 {"first_string", settings.first_string},
                                 {"second_string", settings.second_string},
                                 {"third_string", settings.third_string},
                                 {"first_byte", settings.first_byte},
                                 {"second_byte", settings.second_byte}});
    }
    own["price_limit"] = price_limit_;
}

json acc::state() const
{
    json kept = json::object();
    save(kept);
    const std::lock_guard lock(mutex_);
    json& own = kept["acc"];
    own["status"] = status_;
    own["price"] = price_;
    own["session"] = stage_names[static_cast<std::size_t>(session_)];
    own["condition"] = condition_;
    own["send_page_num"] = send_page_num_;
    return own;
}

}  // namespace norvane::simulator
