#include "simulator/common.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <iterator>

namespace norvane::simulator {

namespace wire = protocol::common;

namespace {

using person = wire::personal_address_list_page;
using group_entry = wire::group_address_list_page;
using easy_document = wire::easy_box_list_page;
using retained_document = wire::retention_list_page;

constexpr std::size_t retention_text_bound = wire::get_job_retention_doc_info::request::field<"text">::bound;

const std::vector<std::string> box_partition = {"TARN_DATA_BOX_PARTITION"};
/// Whichever of the two the application has made.
const std::vector<std::string> address_partitions = {"TARN_DATA_ADDRESS_PARTITION", "TARN_DATA_GRP_MEM_ADRS_PRT"};

template <typename Field>
boxes::record_type record_of()
{
    return {std::string(Field::type), Field::width};
}

template <typename Page>
boxes::record_type element_of()
{
    return {std::string(Page::element_type), Page::element_size};
}

boxes::types box_types()
{
    return {record_of<wire::add_box::request::field<"info">>(), element_of<wire::box_list_page>(),
            element_of<wire::document_list_page>()};
}

boxes::types fax_box_types()
{
    return {record_of<wire::add_fax_box::request::field<"info">>(), element_of<wire::fax_box_list_page>(),
            element_of<wire::fax_document_list_page>()};
}

template <typename Page>
element fill(const layouts& records, const node& content)
{
    return records.fill(std::string(Page::element_type), Page::element_size, content);
}

template <typename Page>
std::string text_of(const layouts& records, const element& from, const std::string& field)
{
    return records.text(std::string(Page::element_type), from, field);
}

template <typename Page>
std::uint32_t id_of(const layouts& records, const element& from)
{
    return records.number(std::string(Page::element_type), from, "id");
}

/// The name under which lists are prepared and paged. One operation may finish several kinds.
template <typename Finish>
std::string finish_name()
{
    return "common list finished by " + std::to_string(Finish::id);
}

template <typename Page, typename Finish>
list_kind kind_of()
{
    return {"common list paged by " + std::to_string(Page::id), finish_name<Finish>()};
}

/// Whether a name has the text somewhere, in capital letters or small ones.
bool matches(const std::string& name, const std::string& text)
{
    const auto same = [](char one, char other) {
        return std::tolower(static_cast<unsigned char>(one)) == std::tolower(static_cast<unsigned char>(other));
    };
    return std::search(name.begin(), name.end(), text.begin(), text.end(), same) != name.end();
}

/// The elements whose field "name" matches.
template <typename Page>
prepared_lists::selection named(const layouts& records, const std::string& name)
{
    return [&records, name](const element& each) { return matches(text_of<Page>(records, each, "name"), name); };
}

}  // namespace

common::common(const node& device, const environment& shared)
    : codes_(shared.codes),
      records_(shared.records),
      lists_(shared.lists),
      observers_(wire::interface_id, shared.messages),
      boxes_(device["common"]["boxes"], shared, box_types()),
      fax_boxes_(device["common"]["fax_boxes"], shared, fax_box_types())
{
    const node own = device["common"];
    read_address_book(own);
    for (const node& entry : own["eweb_certificates"].elements()) certificates_.insert(entry.text());
    for (const node& entry : own["easy_documents"].elements()) {
        easy_documents_.push_back(fill<easy_document>(records_, entry));
    }
    for (const node& entry : own["retained_jobs"].elements()) {
        retained_jobs_.push_back({entry.at("box_type").number(), entry["password"].text_or(""),
                                  fill<retained_document>(records_, entry.at("document"))});
    }
    javavm_state_ = own["javavm_state"].number_or(0);
    acceptance_ = own["acceptance"].number_or(0);
    network_ = own["network"].number_or(0);
    resident_apps_ = own["resident_apps"].number_or(0);
    sleep_ = own["sleep"].number_or(0);
    save_mode_prohibited_ = own["save_mode_prohibited"].number_or(0);
    wakeup_value_ = own["wakeup"]["value"].number_or(0);
    wakeup_date_ = own["wakeup"]["date"].number_or(0);
}

void common::read_address_book(const node& own)
{
    std::set<std::uint32_t> known;
    for (const node& entry : own["personal_addresses"].elements()) {
        persons_.push_back(fill<person>(records_, entry));
        if (!known.insert(id_of<person>(records_, persons_.back())).second) entry.fail("an \"id\" of its own");
    }
    for (const node& entry : own["groups"].elements()) {
        group made{fill<group_entry>(records_, entry.at("info")), {}};
        const std::uint32_t id = id_of<group_entry>(records_, made.info);
        if (groups_.contains(id)) entry.at("info").fail("an \"id\" of its own");
        for (const node& member : entry["members"].elements()) {
            made.members.push_back(member.number());
            if (!known.contains(made.members.back())) member.fail("the \"id\" of one of the personal_addresses");
        }
        groups_[id] = std::move(made);
    }
}

void common::serve(router& router)
{
    observers_.serve<wire::add_observer, wire::remove_observer>(router);
    serve_state(router);
    serve_power(router);
    serve_boxes(router);
    serve_fax_boxes(router);
    serve_other_documents(router);
    serve_document_lists(router);
    serve_address_lists(router);
}

/// An operation of one number that is kept and announced.
template <typename Row, fixed_text Sent, typename Event, fixed_text Told>
void common::on_change(router& router, std::uint32_t common::*kept)
{
    router.on<Row>([this, kept](const auto& request, auto&) {
        const std::uint32_t value = get<Sent>(request);
        {
            const std::lock_guard lock(mutex_);
            this->*kept = value;
        }
        observers_.announce(event_of<Event>().template set<Told>(value));
        return 0U;
    });
}

void common::serve_state(router& router)
{
    on_change<wire::service_state_changed, "type", wire::service_state, "type">(router, &common::acceptance_);
    on_change<wire::network_state_changed, "type", wire::network_state, "type">(router, &common::network_);
    on_change<wire::request_all_resident_apps_to_change_state, "state", wire::resident_app_state, "state">(
        router, &common::resident_apps_);
    router.on<wire::request_activate>([this](const auto& request, auto&) {
        observers_.announce(event_of<wire::activation>()
                                .set<"scenario">(get<"scenario">(request))
                                .template set<"argument">(get<"application">(request)));
        return 0U;
    });
    router.on<wire::check_eweb_cert_info>([this](const auto& request, auto&) {
        return certificates_.contains(get<"certificate">(request)) ? 0U : codes_.code("not_found");
    });
    router.on<wire::check_javavm_status>([this](const auto&, auto& reply) {
        set<"state">(reply, javavm_state_);
        return 0U;
    });
}

void common::serve_power(router& router)
{
    router.on<wire::request_energy_saving_mode>([this](const auto& request, auto&) {
        const std::uint32_t state = get<"state">(request);
        {
            const std::lock_guard lock(mutex_);
            if (save_mode_prohibited_ != 0 && state != 0) return codes_.code("wrong_state");
            sleep_ = state;
        }
        observers_.announce(event_of<wire::sleep_state>().set<"state">(state));
        return 0U;
    });
    router.on<wire::request_save_mode_prohibition>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        save_mode_prohibited_ = get<"flag">(request);
        return 0U;
    });
    router.on<wire::suspend_deep_sleep>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        deep_sleep_suspended_.insert({request.process(), get<"value">(request)});
        return 0U;
    });
    router.on<wire::resume_deep_sleep>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        return deep_sleep_suspended_.erase({request.process(), get<"value">(request)}) == 1 ? 0U
                                                                                            : codes_.code("not_found");
    });
    router.on<wire::set_wakeup_date>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        wakeup_value_ = get<"value">(request);
        wakeup_date_ = get<"date">(request);
        return 0U;
    });
    // The date is the whole answer: it stands where other operations have their result.
    router.on<wire::get_wakeup_date>([this](const auto&, auto&) {
        const std::lock_guard lock(mutex_);
        return wakeup_date_;
    });
    router.on<wire::check_allowed_to_be_deep_sleep_mode>([this](const auto&, auto& reply) {
        const std::lock_guard lock(mutex_);
        set<"allowed">(reply, deep_sleep_allowed() ? 1U : 0U);
        return 0U;
    });
}

void common::serve_boxes(router& router)
{
    const auto add = [this](const auto& request, auto&) { return boxes_.add(get<"info">(request)); };
    const auto update = [this](const auto& request, auto&) {
        return boxes_.update(get<"box_id">(request), get<"text">(request), get<"info">(request));
    };
    const auto remove = [this](const auto& request, auto&) {
        return boxes_.remove(get<"box_id">(request), get<"text">(request));
    };
    const auto remove_document = [this](const auto& request, auto&) {
        return boxes_.remove_document(get<"box_id">(request), get<"text">(request), get<"document_id">(request));
    };
    const auto read = [this](const auto& request, auto& reply) {
        std::vector<char> info;
        const std::uint32_t failure = boxes_.read(get<"box_id">(request), get<"text">(request), info);
        set<"info">(reply, info);
        return failure;
    };
    const auto capacity = [this](const auto& request, auto& reply) {
        std::uint32_t available = 0;
        const std::uint32_t failure = boxes_.available_capacity(get<"box_id">(request), available);
        set<"capacity">(reply, available);
        return failure;
    };
    router.on<wire::add_box>(add);
    router.on<wire::add_box_bkg>(add);
    router.on<wire::update_box_info>(update);
    router.on<wire::update_box_info_bkg>(update);
    router.on<wire::delete_box>(remove);
    router.on<wire::delete_box_bkg>(remove);
    router.on<wire::delete_document>(remove_document);
    router.on<wire::delete_document_bkg>(remove_document);
    router.on<wire::get_box_detail_info>(read);
    router.on<wire::get_box_detail_info_bkg>(read);
    router.on<wire::get_box_available_capacity>(capacity);
    router.on<wire::get_box_available_capacity_bkg>(capacity);
}

void common::serve_fax_boxes(router& router)
{
    router.on<wire::add_fax_box>([this](const auto& request, auto&) { return fax_boxes_.add(get<"info">(request)); });
    router.on<wire::update_fax_box_info>([this](const auto& request, auto&) {
        return fax_boxes_.update(get<"fax_box_id">(request), get<"text">(request), get<"info">(request));
    });
    router.on<wire::get_fax_box_detail_info>([this](const auto& request, auto& reply) {
        std::vector<char> info;
        const std::uint32_t failure = fax_boxes_.read(get<"fax_box_id">(request), get<"text">(request), info);
        set<"info">(reply, info);
        return failure;
    });
    router.on<wire::delete_fax_box>([this](const auto& request, auto&) {
        return fax_boxes_.remove(get<"fax_box_id">(request), get<"text">(request));
    });
    router.on<wire::delete_fax_document>([this](const auto& request, auto&) {
        return fax_boxes_.remove_document(get<"fax_box_id">(request), get<"text">(request),
                                          get<"document_id">(request));
    });
}

void common::serve_other_documents(router& router)
{
    router.on<wire::delete_easy_document>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        const auto removed = std::erase_if(easy_documents_, [&](const element& each) {
            return text_of<easy_document>(records_, each, "path") == get<"access_path">(request);
        });
        return removed == 0 ? codes_.code("not_found") : 0U;
    });
    router.on<wire::get_job_retention_doc_info>([this](const auto& request, auto& reply) {
        const std::lock_guard lock(mutex_);
        const auto found = find_retained(get<"document_id">(request));
        if (found == retained_jobs_.end()) return codes_.code("not_found");
        if (!opens(found->password, get<"text">(request), retention_text_bound)) return codes_.code("wrong_password");
        using info = wire::get_job_retention_doc_info::reply::field<"info">;
        set<"info">(reply, records_.convert(std::string(retained_document::element_type), found->document,
                                            std::string(info::type), info::width));
        return 0U;
    });
    router.on<wire::delete_job_retention_doc>([this](const auto& request, auto&) {
        const std::lock_guard lock(mutex_);
        const auto found = find_retained(get<"document_id">(request));
        if (found == retained_jobs_.end() || found->box_type != get<"box_type">(request))
            return codes_.code("not_found");
        if (!opens(found->password, get<"text">(request), retention_text_bound)) return codes_.code("wrong_password");
        retained_jobs_.erase(found);
        return 0U;
    });
}

/// `select(request, elements)` collects the list's elements and returns the result code. The two figures
/// are the number of elements and the number of pages.
template <typename Prepare, typename Page, typename Finish, typename Select>
void common::on_prepare(router& router, Select select)
{
    router.on<Prepare>([this, select](const auto& request, auto& reply) {
        elements found;
        if (const std::uint32_t failure = select(request, found)) return failure;
        set<"first">(reply, static_cast<std::uint32_t>(found.size()));
        set<"second">(reply, lists_.prepare(request.process(), kind_of<Page, Finish>(), std::move(found),
                                            get<"num">(request), Page::capacity));
        return 0U;
    });
}

template <typename Page, typename Finish>
void common::on_page(router& router, const std::vector<std::string>& partitions)
{
    router.on<Page>([this, partitions](const auto& request, auto& reply) {
        prepared_lists::selection wanted;
        // A search says with every page what is searched for: it may have been prepared without.
        if constexpr (std::is_same_v<typename Page::request, wire::search_page_request>) {
            wanted = named<Page>(records_, get<"name">(request));
        }
        std::uint32_t count = 0;
        const std::uint32_t result =
            lists_.write(request.process(), kind_of<Page, Finish>(), get<"block">(request), partitions, count, wanted);
        set<"count">(reply, count);
        return result;
    });
}

template <typename Finish>
void common::on_finish(router& router)
{
    router.on<Finish>(
        [this](const auto& request, auto&) { return lists_.finish(request.process(), finish_name<Finish>()); });
}

void common::serve_document_lists(router& router)
{
    const auto all_boxes = [this](const auto&, elements& found) {
        found = boxes_.list();
        return 0U;
    };
    on_prepare<wire::box_list_prepare, wire::box_list_page, wire::box_list_finish>(router, all_boxes);
    on_prepare<wire::box_list_prepare_bkg, wire::box_list_page, wire::box_list_finish>(router, all_boxes);
    on_page<wire::box_list_page, wire::box_list_finish>(router, box_partition);

    const auto documents = [this](const auto& request, elements& found) {
        return boxes_.documents(get<"box_id">(request), get<"text">(request), found);
    };
    on_prepare<wire::document_list_prepare, wire::document_list_page, wire::document_list_finish>(router, documents);
    on_prepare<wire::document_list_prepare_bkg, wire::document_list_page, wire::document_list_finish>(router,
                                                                                                      documents);
    on_page<wire::document_list_page, wire::document_list_finish>(router, box_partition);

    on_prepare<wire::easy_box_list_prepare, wire::easy_box_list_page, wire::easy_box_list_finish>(
        router, [this](const auto& request, elements& found) {
            const std::string folder = get<"access_path">(request) + "/";
            const std::lock_guard lock(mutex_);
            std::copy_if(easy_documents_.begin(), easy_documents_.end(), std::back_inserter(found),
                         [&](const element& each) {
                             return text_of<easy_document>(records_, each, "path").starts_with(folder);
                         });
            return 0U;
        });
    on_page<wire::easy_box_list_page, wire::easy_box_list_finish>(router, box_partition);
    // This is the finish of the documents' and of the easy boxes' lists as well.
    on_finish<wire::box_list_finish>(router);

    on_prepare<wire::fax_box_list_prepare, wire::fax_box_list_page, wire::fax_box_list_finish>(
        router, [this](const auto&, elements& found) {
            found = fax_boxes_.list();
            return 0U;
        });
    on_page<wire::fax_box_list_page, wire::fax_box_list_finish>(router, box_partition);
    on_finish<wire::fax_box_list_finish>(router);

    on_prepare<wire::fax_document_list_prepare, wire::fax_document_list_page, wire::fax_document_list_finish>(
        router, [this](const auto& request, elements& found) {
            return fax_boxes_.documents(get<"fax_box_id">(request), get<"text">(request), found);
        });
    on_page<wire::fax_document_list_page, wire::fax_document_list_finish>(router, box_partition);
    on_finish<wire::fax_document_list_finish>(router);

    on_prepare<wire::retention_list_prepare, wire::retention_list_page, wire::retention_list_finish>(
        router, [this](const auto& request, elements& found) {
            const std::lock_guard lock(mutex_);
            for (const retained_job& each : retained_jobs_) {
                if (each.box_type == get<"box_type">(request)) found.push_back(each.document);
            }
            return 0U;
        });
    on_page<wire::retention_list_page, wire::retention_list_finish>(router, box_partition);
    on_finish<wire::retention_list_finish>(router);
}

void common::serve_address_lists(router& router)
{
    const auto all_persons = [this](const auto&, elements& found) {
        found = persons_;
        return 0U;
    };
    const auto all_groups = [this](const auto&, elements& found) {
        for (const auto& [id, each] : groups_) found.push_back(each.info);
        return 0U;
    };
    on_prepare<wire::personal_address_list_prepare, wire::personal_address_list_page,
               wire::personal_address_list_finish>(router, all_persons);
    on_page<wire::personal_address_list_page, wire::personal_address_list_finish>(router, address_partitions);
    on_finish<wire::personal_address_list_finish>(router);

    on_prepare<wire::group_address_list_prepare, wire::group_address_list_page, wire::group_address_list_finish>(
        router, all_groups);
    on_page<wire::group_address_list_page, wire::group_address_list_finish>(router, address_partitions);
    on_finish<wire::group_address_list_finish>(router);

    using finish_members = wire::group_member_address_list_finish;
    using address_page = wire::group_member_address_list_page;
    using member_page = wire::group_member_list_page;
    on_prepare<wire::group_member_address_list_prepare, address_page, finish_members>(
        router, [this](const auto& request, elements& found) {
            return members_of(get<"group">(request), element_of<address_page>(), found);
        });
    on_prepare<wire::group_member_list_prepare, member_page, finish_members>(
        router, [this](const auto& request, elements& found) {
            return members_of(get<"group">(request), element_of<member_page>(), found);
        });
    on_page<address_page, finish_members>(router, address_partitions);
    on_page<member_page, finish_members>(router, address_partitions);
    on_finish<finish_members>(router);

    on_prepare<wire::search_personal_prepare, wire::search_personal_page, wire::search_personal_finish>(router,
                                                                                                        all_persons);
    on_prepare<wire::search_personal_by_name_prepare, wire::search_personal_page, wire::search_personal_finish>(
        router, [this, all_persons](const auto& request, elements& found) {
            all_persons(request, found);
            std::erase_if(found, std::not_fn(named<person>(records_, get<"name">(request))));
            return 0U;
        });
    on_page<wire::search_personal_page, wire::search_personal_finish>(router, address_partitions);
    on_finish<wire::search_personal_finish>(router);

    on_prepare<wire::search_group_prepare, wire::search_group_page, wire::search_group_finish>(router, all_groups);
    on_prepare<wire::search_group_by_name_prepare, wire::search_group_page, wire::search_group_finish>(
        router, [this, all_groups](const auto& request, elements& found) {
            all_groups(request, found);
            std::erase_if(found, std::not_fn(named<group_entry>(records_, get<"name">(request))));
            return 0U;
        });
    on_page<wire::search_group_page, wire::search_group_finish>(router, address_partitions);
    on_finish<wire::search_group_finish>(router);
}

std::vector<common::retained_job>::iterator common::find_retained(std::uint32_t id)
{
    return std::find_if(retained_jobs_.begin(), retained_jobs_.end(), [&](const retained_job& each) {
        return id_of<retained_document>(records_, each.document) == id;
    });
}

bool common::deep_sleep_allowed()
{
    std::erase_if(deep_sleep_suspended_, [](const auto& each) { return !host::alive(each.first); });
    return deep_sleep_suspended_.empty() && save_mode_prohibited_ == 0;
}

std::uint32_t common::members_of(std::uint32_t id, const boxes::record_type& type, elements& found) const
{
    const auto which = groups_.find(id);
    if (which == groups_.end()) return codes_.code("not_found");
    for (const std::uint32_t member_id : which->second.members) {
        const auto member = std::find_if(persons_.begin(), persons_.end(), [&](const element& each) {
            return id_of<person>(records_, each) == member_id;
        });
        found.push_back(records_.convert(std::string(person::element_type), *member, type.name, type.size));
    }
    return 0;
}

void common::save(json& device) const
{
    json& own = device["common"];
    own["boxes"] = boxes_.saved();
    own["fax_boxes"] = fax_boxes_.saved();
    const std::lock_guard lock(mutex_);
    own["easy_documents"] = json::array();
    for (const element& each : easy_documents_) {
        own["easy_documents"].push_back(records_.describe(std::string(easy_document::element_type), each));
    }
    own["retained_jobs"] = json::array();
    for (const retained_job& each : retained_jobs_) {
        own["retained_jobs"].push_back(
            {{"box_type", each.box_type},
             {"password", each.password},
             {"document", records_.describe(std::string(retained_document::element_type), each.document)}});
    }
    own["acceptance"] = acceptance_;
    own["network"] = network_;
    own["resident_apps"] = resident_apps_;
    own["sleep"] = sleep_;
    own["save_mode_prohibited"] = save_mode_prohibited_;
    own["wakeup"] = {{"value", wakeup_value_}, {"date", wakeup_date_}};
}

}  // namespace norvane::simulator
