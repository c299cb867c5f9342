#include "overhead_twins.h"

#include <cstring>

namespace twins {

bmc_mc_client* client = nullptr;

namespace {

template <unsigned int RequestLength, unsigned int ReplyLength>
struct records {
    records() : reply_length(ReplyLength)
    {
        std::memset(request, 0, sizeof request);
        std::memset(reply, 0, sizeof reply);
    }

    alignas(8) char request[RequestLength];
    alignas(8) char reply[ReplyLength];
    unsigned int reply_length;
};

void store(char* at, unsigned int value) { std::memcpy(at, &value, sizeof value); }

unsigned int load(const char* at)
{
    unsigned int value = 0;
    std::memcpy(&value, at, sizeof value);
    return value;
}

}  // namespace

unsigned int set_number(unsigned int key, unsigned int value)
{
    records<80, 16> own;
    store(own.request + 72, key);
    store(own.request + 76, value);
    if (client != nullptr) {
        client->bmc_mc_send_sync_message(4, 2, own.request, 80, own.reply, &own.reply_length, "TARN_SRV");
    }
    return load(own.reply + 12);
}

unsigned int get_number(unsigned int key, unsigned int& value)
{
    records<80, 20> own;
    store(own.request + 72, key);
    if (client != nullptr) {
        client->bmc_mc_send_sync_message(4, 0, own.request, 80, own.reply, &own.reply_length, "TARN_SRV");
    }
    value = load(own.reply + 12);
    return load(own.reply + 16);
}

unsigned int set_machine_number(unsigned int key, unsigned long selector, unsigned int value)
{
    records<84, 16> own;
    store(own.request + 72, key);
    store(own.request + 76, static_cast<unsigned int>(selector));
    store(own.request + 80, value);
    if (client != nullptr) {
        client->bmc_mc_send_sync_message(4, 7, own.request, 84, own.reply, &own.reply_length, "TARN_SRV");
    }
    return load(own.reply + 12);
}

unsigned int get_text(unsigned int key, std::string& text)
{
    records<1104, 1044> own;
    store(own.request + 72, key);
    if (client != nullptr) {
        client->bmc_mc_send_sync_message(4, 1, own.request, 1104, own.reply, &own.reply_length, "TARN_SRV");
    }
    text.assign(own.reply + 12, strnlen(own.reply + 12, 1044 - 12));
    return load(own.reply + 1040);
}

unsigned int get_machine_text(unsigned int key, unsigned long selector, std::string& text)
{
    records<80, 1044> own;
    store(own.request + 72, key);
    store(own.request + 76, static_cast<unsigned int>(selector));
    if (client != nullptr) {
        client->bmc_mc_send_sync_message(4, 8, own.request, 80, own.reply, &own.reply_length, "TARN_SRV");
    }
    text.assign(own.reply + 12, strnlen(own.reply + 12, 1044 - 12));
    return load(own.reply + 1040);
}

unsigned int get_machine_text_bkg(unsigned int key, unsigned long selector, std::string& text)
{
    records<80, 1044> own;
    store(own.request + 72, key);
    store(own.request + 76, static_cast<unsigned int>(selector));
    if (client != nullptr) {
        client->bmc_mc_send_sync_message(4, 13, own.request, 80, own.reply, &own.reply_length, "TARN_SRV");
    }
    text.assign(own.reply + 12, strnlen(own.reply + 12, 1044 - 12));
    return load(own.reply + 1040);
}

unsigned int set_text(unsigned int key, std::string text)
{
    records<1104, 16> own;
    store(own.request + 72, key);
    std::memcpy(own.request + 76, text.c_str(), strnlen(text.c_str(), 1025));
    if (client != nullptr) {
        client->bmc_mc_send_sync_message(4, 3, own.request, 1104, own.reply, &own.reply_length, "TARN_SRV");
    }
    return load(own.reply + 12);
}

}  // namespace twins
