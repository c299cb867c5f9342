// The department interface: hidden departments by their code, and the department-wide modes.
#pragma once

#include "protocol/dept.h"
#include "simulator/area.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace norvane::simulator {

/// A department's code is the text field "code" of its record's layout; of a longer one only as much
/// counts as requests carry. Resetting a department's counter clears the fields that the device file
/// names as its counters.
class dept : public area {
public:
    dept(const node& device, const environment& shared);

    [[nodiscard]] long interface_id() const override { return protocol::dept::interface_id; }
    void serve(router& router) override;
    void save(json& device) const override;

private:
    using department = std::vector<char>;
    using departments = std::map<std::string, department>;

    [[nodiscard]] std::string code_of(const department& record) const;
    [[nodiscard]] department named(const std::string& code) const;
    std::uint32_t add(const std::string& code, department record);

    template <typename Row, typename Handle>
    void on_department(router& router, Handle handle);
    template <typename SetRow, typename GetRow, fixed_text Field>
    void serve_mode(router& router, std::uint32_t& mode);

    const errors& codes_;
    const layouts& records_;
    mutable std::mutex mutex_;
    departments departments_;
    std::vector<std::string> counters_;
    std::uint32_t dept_mode_;
    std::uint32_t mix_mode_;
    std::uint32_t invalid_dept_mode_;
    std::uint32_t limit_action_;
};

}  // namespace norvane::simulator
