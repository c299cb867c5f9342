#include "simulator/user.h"

namespace norvane::simulator {

namespace wire = protocol::user;

namespace {

constexpr std::size_t hidden_size = wire::create_hide_account::request::field<"account">::width;
constexpr auto hidden_type = "TARN_HIDE_USERINFO_RECORD";
constexpr auto local_list = "user/local_user_list";
constexpr auto partition = "TARN_DATA_USER_PARTITION";

/// A text that a request's field can carry.
std::string text_within(const node& value, std::size_t width)
{
    std::string text = value.text_or({});
    if (text.size() > width) value.fail("a text of at most " + std::to_string(width) + " bytes");
    return text;
}

}  // namespace

user::user(const node& device, const environment& shared)
    : codes_(shared.codes), records_(shared.records), lists_(shared.lists)
{
    const node own = device["user"];
    read_accounts(own);
    read_hidden_accounts(own);
    for (const node& entry : own["kinds"].elements()) {
        const std::string name = entry["user"].text_or({});
        if (!name.empty() && find(name) == nullptr) entry.at("user").fail("the name of an account");
        kinds_[entry.at("kind").number()] = name;
    }
    authentication_mode_ = own["authentication_mode"].number_or(0);
    func_auth_mode_ = own["func_auth_mode"].number_or(0);
    logout_limit_ = own["logout_limit"].number_or(0);
}

void user::read_accounts(const node& own)
{
    for (const node& entry : own["accounts"].elements()) {
        account made{text_within(entry.at("user"), wire::user_name::width),
                     text_within(entry["password"], wire::password::width),
                     text_within(entry["extra"], wire::account_login_extra::request::field<"extra">::width),
                     text_within(entry["idm"], wire::idm_login::request::field<"idm">::width),
                     entry["rights"].number_or(0),
                     records_.fill(std::string(wire::local_user_list::element_type),
                                   wire::local_user_list::element_size, entry["info"])};
        if (find(made.name) != nullptr) entry.at("user").fail("a name that no other account has");
        accounts_.push_back(std::move(made));
    }
}

void user::read_hidden_accounts(const node& own)
{
    for (const node& entry : own["hidden_accounts"].elements()) {
        element record = records_.fill(hidden_type, hidden_size, entry);
        const std::string name = records_.text(hidden_type, record, "user");
        if (name.empty()) entry.fail(std::string("a name in the field \"user\" of the layout of ") + hidden_type);
        if (find(name) != nullptr || hidden_.contains(name)) entry.fail("a name that no other account has");
        hidden_[name] = {std::move(record), entry.value()};
    }
}

void user::serve(router& router)
{
    serve_logins(router);
    serve_information(router);
    serve_modes(router);
    serve_hidden_accounts(router);
    serve_list(router);
}

void user::serve_logins(router& router)
{
    const auto answer_login = [this](const credentials& who, auto& reply) {
        std::uint32_t cert_id = 0;
        const std::uint32_t result = log_in(who, cert_id);
        set<"cert_id">(reply, cert_id);
        return result;
    };
    router.on<wire::account_login>([answer_login](const auto& request, auto& reply) {
        return answer_login({get<"user">(request), get<"password">(request), std::nullopt}, reply);
    });
    router.on<wire::account_login_extra>([answer_login](const auto& request, auto& reply) {
        return answer_login({get<"user">(request), get<"password">(request), get<"extra">(request)}, reply);
    });
    router.on<wire::idm_login>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const std::string idm = get<"idm">(request);
        const auto found = std::find_if(accounts_.begin(), accounts_.end(),
                                        [&idm](const account& each) { return !idm.empty() && each.idm == idm; });
        if (found == accounts_.end()) return codes_.code("unknown_card");
        set<"cert_id">(reply, certify(found->name));
        return 0U;
    });
    const auto logout = [this](const auto& request, auto&) { return log_out(get<"cert_id">(request)); };
    router.on<wire::logout>(logout);
    router.on<wire::logout_bkg>(logout);
}

void user::serve_information(router& router)
{
    router.on<wire::get_userinfo>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto kind = kinds_.find(get<"kind">(request));
        if (kind == kinds_.end()) return codes_.code("unknown_key");
        if (kind->second.empty() && logins_.empty()) return codes_.code("wrong_state");
        const account* const who = find(kind->second.empty() ? logins_.rbegin()->second : kind->second);
        // A hidden account has no information.
        if (who == nullptr) return codes_.code("not_found");
        set<"info">(reply, who->info);
        return 0U;
    });
    const auto answer_rights = [this](const credentials& who, auto& reply) {
        const std::lock_guard lock(mutex_);
        std::uint32_t rights = 0;
        const std::uint32_t result = check(who, rights);
        set<"rights">(reply, rights);
        return result;
    };
    router.on<wire::get_rights>([answer_rights](const auto& request, auto& reply) {
        return answer_rights({get<"user">(request), get<"password">(request), std::nullopt}, reply);
    });
    router.on<wire::get_rights_extra>([answer_rights](const auto& request, auto& reply) {
        return answer_rights({get<"user">(request), get<"password">(request), get<"extra">(request)}, reply);
    });
}

void user::serve_modes(router& router)
{
    router.on<wire::get_authentication_mode>([this](const auto&, auto& reply) {
        const std::lock_guard lock(mutex_);
        set<"mode">(reply, authentication_mode_);
        return 0U;
    });
    const auto keep_in = [this](std::uint32_t& mode) {
        return [this, &mode](const auto& request, auto&) {
            const std::lock_guard lock(mutex_);
            mode = get<"mode">(request);
            return 0U;
        };
    };
    router.on<wire::set_authentication_mode>(keep_in(authentication_mode_));
    router.on<wire::set_func_auth_mode>(keep_in(func_auth_mode_));
    router.on<wire::logout_limit>(keep_in(logout_limit_));
}

void user::serve_hidden_accounts(router& router)
{
    // A password that an application has sent is not saved.
    const auto keep = [this](const std::string& name, element record) {
        json content = records_.describe(hidden_type, record, secrets::left_out);
        hidden_[name] = {std::move(record), std::move(content)};
    };
    router.on<wire::create_hide_account>([this, keep](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        auto record = get<"account">(request);
        const std::string name = records_.text(hidden_type, record, "user");
        if (name.empty()) return codes_.code("unknown_user");
        if (find(name) != nullptr || hidden_.contains(name)) return codes_.code("exists");
        keep(name, std::move(record));
        return 0U;
    });
    router.on<wire::update_hide_account>([this, keep](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        auto record = get<"account">(request);
        const std::string name = records_.text(hidden_type, record, "user");
        if (!hidden_.contains(name)) return codes_.code("unknown_user");
        keep(name, std::move(record));
        return 0U;
    });
    router.on<wire::delete_hide_account>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        return hidden_.erase(get<"user">(request)) == 1 ? 0U : codes_.code("unknown_user");
    });
    router.on<wire::delete_all_hide_account>([this](const auto&, auto&) {
        const std::lock_guard lock(mutex_);
        hidden_.clear();
        return 0U;
    });
}

void user::serve_list(router& router)
{
    // The argument is the length of a page; the counts are those of the users and of the pages.
    router.on<wire::local_user_list_prepare>([this](const auto& request, auto& reply) {
        std::vector<element> users;
        for (const account& each : accounts_) users.push_back(each.info);
        set<"first_count">(reply, users.size());
        set<"second_count">(reply, lists_.prepare(request.process(), local_list, std::move(users), get<"arg">(request),
                                                  wire::local_user_list::capacity));
        return 0U;
    });
    router.on<wire::local_user_list>([this](const auto& request, auto& reply) {
        std::uint32_t count = 0;
        const std::uint32_t result =
            lists_.write(request.process(), local_list, get<"page">(request), {partition}, count);
        set<"count">(reply, count);
        return result;
    });
    router.on<wire::local_user_list_finish>(
        [this](const auto& request, auto&) { return lists_.finish(request.process(), local_list); });
}

std::uint32_t user::check(const credentials& who, std::uint32_t& rights) const
{
    if (const auto hidden = hidden_.find(who.name); hidden != hidden_.end()) {
        const element& record = hidden->second.record;
        if (who.password != records_.text(hidden_type, record, "password")) return codes_.code("wrong_password");
        rights = records_.number(hidden_type, record, "rights");
        return 0;
    }
    const account* const found = find(who.name);
    if (found == nullptr) return codes_.code("unknown_user");
    if (who.password != found->password || who.extra.value_or(found->extra) != found->extra) {
        return codes_.code("wrong_password");
    }
    rights = found->rights;
    return 0;
}

std::uint32_t user::log_in(const credentials& who, std::uint32_t& cert_id)
{
    const std::lock_guard lock(mutex_);
    std::uint32_t rights = 0;
    const std::uint32_t result = check(who, rights);
    if (result == 0) cert_id = certify(who.name);
    return result;
}

std::uint32_t user::log_out(std::uint32_t cert_id)
{
    const std::lock_guard lock(mutex_);
    return logins_.erase(cert_id) == 1 ? 0 : codes_.code("not_found");
}

std::uint32_t user::certify(const std::string& name)
{
    logins_[++last_cert_id_] = name;
    return last_cert_id_;
}

const user::account* user::find(const std::string& name) const
{
    const auto found =
        std::find_if(accounts_.begin(), accounts_.end(), [&name](const account& each) { return each.name == name; });
    return found == accounts_.end() ? nullptr : &*found;
}

void user::save(json& device) const
{
    const std::lock_guard lock(mutex_);
    json& own = device["user"];
    own["authentication_mode"] = authentication_mode_;
    own["func_auth_mode"] = func_auth_mode_;
    own["logout_limit"] = logout_limit_;
    own["hidden_accounts"] = json::array();
    for (const auto& [name, hidden] : hidden_) own["hidden_accounts"].push_back(hidden.content);
}

json user::state() const
{
    const std::lock_guard lock(mutex_);
    json logins = json::array();
    for (const auto& [cert_id, name] : logins_) logins.push_back({{"cert_id", cert_id}, {"user", name}});
    json hidden = json::array();
    for (const auto& [name, kept] : hidden_) hidden.push_back(name);
    return {{"authentication_mode", authentication_mode_},
            {"func_auth_mode", func_auth_mode_},
            {"logout_limit", logout_limit_},
            {"logins", std::move(logins)},
            {"hidden_accounts", std::move(hidden)}};
}

}  // namespace norvane::simulator
