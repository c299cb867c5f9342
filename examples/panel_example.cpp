// Shows a text on the panel and waits for a key.
//
//     tarnsim examples/device.json &
//     panel_example &
//     tarnctl panel
//     tarnctl notify key 17 1
#include "tarn_panel_facade.h"
#include "tarn_panel_observer.h"

#include <cstdio>
#include <future>

namespace {

class key_pad : public norvane::tarn_panel_observer {
public:
    // Called on a thread of the library's platform.
    unsigned int notify_key_event(unsigned int key, TARN_PANEL_KEY_EVENT event) override
    {
        std::printf("key %u, event %u\n", key, static_cast<unsigned int>(event));
        if (!pressed_) key_.set_value();
        pressed_ = true;
        return 0;
    }

    void wait() { key_.get_future().wait(); }

private:
    bool pressed_ = false;
    std::promise<void> key_;
};

}  // namespace

int main()
{
    norvane::tarn_panel_facade* const panel = norvane::tarn_panel_facade::tarn_panel_get_instance();
    key_pad keys;
    if (const unsigned int failure = panel->tarn_panel_add_observer(&keys)) {
        std::printf("the panel is not to be observed: 0x%08x\n", failure);
        return 1;
    }
    panel->tarn_panel_set_display_text("status", 1, "Press any key", static_cast<TARN_PANEL_DISPLAY_TEXT_TYPE>(0));
    std::printf("waiting for a key\n");
    std::fflush(stdout);
    keys.wait();
    // From here on the observer is told nothing more.
    panel->tarn_panel_remove_observer(&keys);
    return 0;
}
