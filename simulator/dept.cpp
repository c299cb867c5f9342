#include "simulator/dept.h"

#include <algorithm>

namespace norvane::simulator {

namespace wire = protocol::dept;

namespace {

constexpr const char* record_type = "TARN_DEPT_DEPTINFO";
constexpr std::size_t record_size = wire::add_hide_dept::request::field<"department">::width;
constexpr std::size_t code_limit = 9;

}  // namespace

dept::dept(const node& device, const environment& shared) : codes_(shared.codes), records_(shared.records)
{
    const node own = device["dept"];
    for (const node& entry : own["departments"].elements()) {
        department record = records_.fill(record_type, record_size, entry);
        const std::string code = code_of(record);
        if (code.empty()) entry.fail("a department with a text field \"code\"");
        if (!departments_.emplace(code, std::move(record)).second) {
            entry.fail("a code other than \"" + code + "\", which another department has");
        }
    }
    for (const node& entry : own["counters"].elements()) {
        const layout_field* const field = records_.find(record_type, entry.text());
        if (field == nullptr || field->what != layout_field::form::number) {
            entry.fail(std::string("a number field of the layout of ") + record_type);
        }
        counters_.push_back(entry.text());
    }
    dept_mode_ = own["dept_mode"].number_or(0);
    mix_mode_ = own["mix_mode"].number_or(0);
    invalid_dept_mode_ = own["invalid_dept_mode"].number_or(0);
    limit_action_ = own["limit_action"].number_or(0);
}

/// The code that the record itself has; empty where it has none.
std::string dept::code_of(const department& record) const
{
    return records_.text(record_type, record, "code").substr(0, code_limit);
}

/// An otherwise empty department of that code; without one where the layout has no room for it.
dept::department dept::named(const std::string& code) const
{
    department record(record_size, '\0');
    const layout_field* const field = records_.find(record_type, "code");
    if (field != nullptr && field->offset + field->size <= record.size()) {
        std::copy_n(code.begin(), std::min(code.size(), field->size),
                    record.begin() + static_cast<std::ptrdiff_t>(field->offset));
    }
    return record;
}

/// Keeps a new department. A record without a code is of the wrong kind.
std::uint32_t dept::add(const std::string& code, department record)
{
    if (code.empty()) return codes_.code("wrong_kind");
    const std::lock_guard lock(mutex_);
    return departments_.emplace(code, std::move(record)).second ? 0 : codes_.code("exists");
}

/// Binds an operation on the department that the request names by its code.
template <typename Row, typename Handle>
void dept::on_department(router& router, Handle handle)
{
    router.on<Row>([this, handle](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto found = departments_.find(get<"code">(request));
        if (found == departments_.end()) return codes_.code("not_found");
        handle(found, reply);
        return 0U;
    });
}

/// Binds the two operations of a mode that is kept and told as it was set.
template <typename SetRow, typename GetRow, fixed_text Field>
void dept::serve_mode(router& router, std::uint32_t& mode)
{
    router.on<SetRow>([this, &mode](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        mode = get<Field>(request);
        return 0U;
    });
    router.on<GetRow>([this, &mode](const auto&, auto& reply) {
        const std::lock_guard lock(mutex_);
        set<Field>(reply, mode);
        return 0U;
    });
}

void dept::serve(router& router)
{
    router.on<wire::create_hide_dept>([this](const auto& request, auto&) {
        const std::string code = get<"code">(request);
        return add(code, named(code));
    });
    router.on<wire::add_hide_dept>([this](const auto& request, auto&) {
        department record = get<"department">(request);
        const std::string code = code_of(record);
        return add(code, std::move(record));
    });
    router.on<wire::update_hide_dept>([this](const auto& request, auto&) {
        department record = get<"department">(request);
        const std::lock_guard lock(mutex_);
        const auto found = departments_.find(code_of(record));
        if (found == departments_.end()) return codes_.code("not_found");
        found->second = std::move(record);
        return 0U;
    });
    on_department<wire::delete_hide_dept>(router, [this](auto found, auto&) { departments_.erase(found); });
    router.on<wire::delete_all_hide_dept>([this](const auto&, auto&) {
        const std::lock_guard lock(mutex_);
        departments_.clear();
        return 0U;
    });
    on_department<wire::retrieve_hide_dept>(router,
                                            [](auto found, auto& reply) { set<"department">(reply, found->second); });
    on_department<wire::reset_hide_dept_counter>(router, [this](auto found, auto&) {
        for (const std::string& counter : counters_) records_.set(record_type, found->second, counter, 0);
    });
    serve_mode<wire::set_dept_mode, wire::get_dept_mode, "mode">(router, dept_mode_);
    serve_mode<wire::set_mix_mode, wire::get_mix_mode, "mode">(router, mix_mode_);
    serve_mode<wire::set_invalid_dept_mode, wire::get_invalid_dept_mode, "mode">(router, invalid_dept_mode_);
    serve_mode<wire::set_limit_action_mode, wire::get_limit_action_mode, "action">(router, limit_action_);
}

void dept::save(json& device) const
{
    const std::lock_guard lock(mutex_);
    json& own = device["dept"];
    own["departments"] = json::array();
    for (const auto& [code, record] : departments_) {
        own["departments"].push_back(records_.describe(record_type, record));
    }
    own["dept_mode"] = dept_mode_;
    own["mix_mode"] = mix_mode_;
    own["invalid_dept_mode"] = invalid_dept_mode_;
    own["limit_action"] = limit_action_;
}

}  // namespace norvane::simulator
