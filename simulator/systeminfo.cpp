#include "simulator/systeminfo.h"

namespace norvane::simulator {

namespace wire = protocol::systeminfo;

namespace {

constexpr std::size_t paper_info_size = wire::get_paper_info::reply::field<"paper">::width;

std::variant<std::uint32_t, std::string> value_of(const node& entry)
{
    const node value = entry.at("value");
    if (value.is_text()) return value.text();
    return value.number();
}

/// What is stored under `key`, into the reply; an error if there is nothing or it is of the other kind.
template <typename Value, typename Store, typename Key, typename Reply>
std::uint32_t look_up(const errors& codes, const Store& store, const Key& key, Reply reply)
{
    const auto found = store.find(key);
    if (found == store.end()) return codes.code("unknown_key");
    const auto* const value = std::get_if<Value>(&found->second);
    if (value == nullptr) return codes.code("wrong_kind");
    reply(*value);
    return 0;
}

/// Replaces what is stored under `key`, which must be there and of the same kind.
template <typename Value, typename Store, typename Key>
std::uint32_t replace(const errors& codes, Store& store, const Key& key, Value value)
{
    const auto found = store.find(key);
    if (found == store.end()) return codes.code("unknown_key");
    if (!std::holds_alternative<Value>(found->second)) return codes.code("wrong_kind");
    found->second = std::move(value);
    return 0;
}

template <typename Entry>
json saved(const Entry& value)
{
    return std::visit([](const auto& kept) { return json(kept); }, value);
}

}  // namespace

systeminfo::systeminfo(const node& device, const environment& shared) : codes_(shared.codes)
{
    const node own = device["systeminfo"];
    for (const node& entry : own["values"].elements()) values_[entry.at("key").number()] = value_of(entry);
    for (const node& entry : own["machine_info"].elements()) {
        machine_info_[{entry.at("key").number(), entry.at("selector").number()}] = value_of(entry);
    }
    for (const node& entry : own["paper"].elements()) {
        papers_[entry.at("key").number()] = shared.records.fill("TARN_PAPER_INFO", paper_info_size, entry.at("info"));
    }
    for (const node& entry : own["counters"].elements()) {
        counters_[{entry.at("kind").number(), entry.at("detail").number()}] = entry.at("count").number();
    }
    for (const node& entry : own["fax_encryption"].elements()) {
        fax_encryption_[entry.at("key").number()] = entry.at("validity").number();
    }
    screen_size_ = own["screen_size"].number_or(0);
    model_type_ = own["model_type"].number_or(0);
}

void systeminfo::serve(router& router)
{
    router.on<wire::get_number>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        return look_up<std::uint32_t>(codes_, values_, get<"key">(request),
                                      [&](auto number) { set<"value">(reply, number); });
    });
    router.on<wire::get_text>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        return look_up<std::string>(codes_, values_, get<"key">(request),
                                    [&](const auto& text) { set<"text">(reply, text); });
    });
    router.on<wire::set_number>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        return replace(codes_, values_, get<"key">(request), get<"value">(request));
    });
    router.on<wire::set_text>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        return replace(codes_, values_, get<"key">(request), get<"text">(request));
    });
    router.on<wire::get_paper_info>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto found = papers_.find(get<"key">(request));
        if (found == papers_.end()) return codes_.code("unknown_key");
        set<"paper">(reply, found->second);
        return 0U;
    });
    router.on<wire::get_count>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto found = counters_.find({get<"kind">(request), get<"detail">(request)});
        if (found == counters_.end()) return codes_.code("unknown_key");
        set<"count">(reply, found->second);
        return 0U;
    });
    const auto get_machine_number = [this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const machine_key key(get<"key">(request), get<"selector">(request));
        return look_up<std::uint32_t>(codes_, machine_info_, key, [&](auto number) { set<"value">(reply, number); });
    };
    const auto get_machine_text = [this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const machine_key key(get<"key">(request), get<"selector">(request));
        return look_up<std::string>(codes_, machine_info_, key, [&](const auto& text) { set<"text">(reply, text); });
    };
    const auto set_machine_number = [this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        const machine_key key(get<"key">(request), get<"selector">(request));
        return replace(codes_, machine_info_, key, get<"value">(request));
    };
    router.on<wire::get_machine_number>(get_machine_number);
    router.on<wire::get_machine_number_bkg>(get_machine_number);
    router.on<wire::get_machine_text>(get_machine_text);
    router.on<wire::get_machine_text_bkg>(get_machine_text);
    router.on<wire::set_machine_number>(set_machine_number);
    router.on<wire::set_machine_number_bkg>(set_machine_number);
    router.on<wire::get_screen_size>([this](const auto&, auto& reply) {
        set<"size">(reply, screen_size_);
        return 0U;
    });
    router.on<wire::get_model_type>([this](const auto&, auto& reply) {
        set<"model">(reply, model_type_);
        return 0U;
    });
    router.on<wire::get_fax_encryption_validity>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto found = fax_encryption_.find(get<"key">(request));
        if (found == fax_encryption_.end()) return codes_.code("unknown_key");
        set<"validity">(reply, found->second);
        return 0U;
    });
}

void systeminfo::save(json& device) const
{
    const std::lock_guard lock(mutex_);
    json& own = device["systeminfo"];
    own["values"] = json::array();
    for (const auto& [key, value] : values_) own["values"].push_back({{"key", key}, {"value", saved(value)}});
    own["machine_info"] = json::array();
    for (const auto& [key, value] : machine_info_) {
        own["machine_info"].push_back({{"key", key.first}, {"selector", key.second}, {"value", saved(value)}});
    }
}

}  // namespace norvane::simulator
