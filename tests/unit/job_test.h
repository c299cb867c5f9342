// What the tests of the job facade share: its locks by name, and what it traced.
#pragma once

#include "tarn_job_facade.h"

#include "unit/facade_test.h"

#include <future>
#include <string>
#include <vector>

namespace testing_platform {

using strings = std::vector<std::string>;

class job_test : public facade_test<norvane::tarn_job_facade> {
protected:
    job_test() : facade_test(&norvane::tarn_job_facade::tarn_job_get_instance) {}

    enum class lock { none, job, data };

    /// The event with which a lock is taken ("lock") or let go ("unlock").
    std::string event(const std::string& what, lock which)
    {
        const auto& mutex = which == lock::job ? facade().job_mutex_ : facade().shm_mutex_;
        return what + " " + std::to_string(semaphore_number(mutex));
    }

    /// `exercise`, and that each call takes this lock and no other, before it sends and until it has done.
    void exercise_under(lock held, table_row row, const std::function<unsigned int()>& call,
                        const std::function<void()>& expect_values = {},
                        const std::function<void()>& expect_unanswered = {})
    {
        strings once{"send 2/" + std::to_string(row.func_id)};
        if (held != lock::none) once = {event("lock", held), once.front(), event("unlock", held)};
        facade();
        platform().events.clear();
        row.locks_held = held == lock::none ? 0 : 1;

        exercise(row, call, expect_values, expect_unanswered);

        strings thrice = once;
        for (int i = 0; i < 2; ++i) thrice.insert(thrice.end(), once.begin(), once.end());
        EXPECT_EQ(platform().events, thrice);
    }

    /// What has happened since the last call, the creation of the facade left out.
    strings events()
    {
        strings since;
        since.swap(platform().events);
        return since;
    }

    /// What the facade has traced since the last call, each as "operation,text".
    static strings traced()
    {
        strings since;
        for (const trace_line& trace : platform().traces) {
            EXPECT_EQ(trace.area, 1025U);
            EXPECT_EQ(trace.level, 258U);
            EXPECT_EQ(trace.reserved, 0U);
            EXPECT_EQ(trace.format, "%s[%04d]::%s,%s\n");
            since.push_back(without_line(trace.text));
        }
        platform().traces.clear();
        return since;
    }

private:
    /// "operation,text" of a trace line of the facade's, whose number is not stated but is one.
    static std::string without_line(const std::string& text)
    {
        const std::string source = "core_src/tarn_job_facade[";
        const std::size_t end = text.find("]::");
        if (!text.starts_with(source) || end == std::string::npos || !text.ends_with('\n')) {
            return "not a line of the job facade: " + text;
        }
        const std::string number = text.substr(source.size(), end - source.size());
        EXPECT_GE(number.size(), 4U);
        EXPECT_GT(std::stoi(number), 0);
        return text.substr(end + 3, text.size() - end - 4);
    }
};

/// A service that holds the one request of a func id until it is let go, and answers all others at once.
class slow_service {
public:
    explicit slow_service(long held)
    {
        platform().respond([this, held](const request& sent, char*, unsigned int&) {
            if (sent.func_id == held) {
                arrived_.set_value();
                let_go_.get_future().wait();
            }
            return 0L;
        });
    }
    void wait_for_arrival() { arrived_.get_future().wait(); }
    void let_go() { let_go_.set_value(); }

private:
    std::promise<void> arrived_;
    std::promise<void> let_go_;
};

constexpr auto category(unsigned int number) { return static_cast<TARN_JOB_PHB_CATEGORY>(number); }

}  // namespace testing_platform
