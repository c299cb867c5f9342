// The workstation's transport: concurrent calls, slow handlers, and peers that do not keep to the
// protocol.
#include "host/channel.h"
#include "host/runtime_directory.h"
#include "host/service.h"
#include "integration/processes.h"
#include "platform/bmc_mc.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace {

using namespace testing_processes;
using namespace norvane;

class transport : public process_test {};

/// A connection over which a test can send what it likes.
class raw_socket {
public:
    raw_socket() : descriptor_(socket(AF_UNIX, SOCK_STREAM, 0)) {}
    explicit raw_socket(int descriptor) : descriptor_(descriptor) {}
    ~raw_socket() { close(descriptor_); }
    raw_socket(const raw_socket&) = delete;
    raw_socket& operator=(const raw_socket&) = delete;

    void connect_to(const std::string& name) const
    {
        const sockaddr_un address = address_of(name);
        ASSERT_EQ(connect(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }
    void listen_as(const std::string& name) const
    {
        const sockaddr_un address = address_of(name);
        ASSERT_EQ(bind(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        ASSERT_EQ(listen(descriptor_, 4), 0);
    }
    [[nodiscard]] int accept_one() const { return accept(descriptor_, nullptr, nullptr); }
    void send_bytes(const void* bytes, std::size_t size) const { send(descriptor_, bytes, size, MSG_NOSIGNAL); }
    /// Everything until the other end closes the connection.
    [[nodiscard]] std::string read_to_end() const
    {
        std::string all;
        std::array<char, 4096> buffer{};
        for (ssize_t size = 0; (size = recv(descriptor_, buffer.data(), buffer.size(), 0)) > 0;) {
            all.append(buffer.data(), static_cast<std::size_t>(size));
        }
        return all;
    }
    void receive(std::size_t size) const
    {
        std::string bytes(size, '\0');
        recv(descriptor_, bytes.data(), size, MSG_WAITALL);
    }
    void end_sending() const { shutdown(descriptor_, SHUT_WR); }

private:
    static sockaddr_un address_of(const std::string& name)
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        host::socket_path(name).copy(address.sun_path, sizeof address.sun_path - 1);
        return address;
    }

    int descriptor_;
};

host::service::options serving(std::initializer_list<long> interfaces)
{
    host::service::options options;
    options.interfaces = interfaces;
    return options;
}

/// Sends a request of `size` bytes and expects a reply of `room` bytes at the most.
long send_request(bmc_mc_client& client, long func_id, unsigned int& length, std::array<char, 64>& reply)
{
    std::array<char, 80> request{};
    request[72] = 'q';
    return client.bmc_mc_send_sync_message(1, func_id, request.data(), request.size(), reply.data(), &length,
                                           "TARN_SRV");
}

std::vector<char> echo(const host::request& request)
{
    std::vector<char> reply(request.reply_room, '\0');
    reply[12] = static_cast<char>(request.func_id);
    return reply;
}

TEST_F(transport, only_offered_interfaces_are_there)
{
    const host::service service(serving({1, 4}), echo);
    bmc_mc_client client;
    EXPECT_TRUE(client.bmc_mc_check_facade("TARN_SRV", 1));
    EXPECT_TRUE(client.bmc_mc_check_facade("TARN_SRV", 4));
    EXPECT_FALSE(client.bmc_mc_check_facade("TARN_SRV", 2));
    EXPECT_FALSE(client.bmc_mc_check_facade("OTHER", 1));
}

TEST_F(transport, a_held_call_holds_up_nobody)
{
    std::mutex mutex;
    std::condition_variable released;
    bool let_go = false;
    const host::service service(serving({1}), [&](const host::request& request) {
        if (request.func_id == 99) {
            std::unique_lock lock(mutex);
            released.wait(lock, [&] { return let_go; });
        }
        return echo(request);
    });
    bmc_mc_client client;
    std::atomic<int> answered = 0;
    const auto call = [&](long id) {
        std::array<char, 64> reply{};
        unsigned int length = 16;
        EXPECT_EQ(send_request(client, id, length, reply), 0);
        EXPECT_EQ(reply[12], static_cast<char>(id));
        ++answered;
    };
    std::thread held(call, 99);
    std::vector<std::thread> callers;
    for (long caller = 1; caller <= 8; ++caller) {
        callers.emplace_back([&call, caller] {
            for (int i = 0; i < 50; ++i) call(caller);
        });
    }
    for (auto& thread : callers) thread.join();
    EXPECT_EQ(answered, 400) << "all but the held one";
    {
        const std::lock_guard lock(mutex);
        let_go = true;
    }
    released.notify_all();
    held.join();
    EXPECT_EQ(answered, 401);
}

TEST_F(transport, a_short_reply_leaves_the_rest_of_the_room_as_it_was)
{
    const host::service service(serving({1}), [](const host::request&) { return std::vector<char>(14, 'x'); });
    bmc_mc_client client;
    std::array<char, 64> reply{};
    reply[14] = 'k';
    unsigned int length = 64;
    EXPECT_EQ(send_request(client, 1, length, reply), 0);
    EXPECT_EQ(length, 14U);
    EXPECT_EQ(reply[13], 'x');
    EXPECT_EQ(reply[14], 'k');
}

TEST_F(transport, a_reply_that_is_too_long_is_not_taken)
{
    const host::service service(
        serving({1}), [](const host::request& request) { return std::vector<char>(request.reply_room + 1, 'x'); });
    bmc_mc_client client;
    std::array<char, 64> reply{};
    unsigned int length = 16;
    EXPECT_NE(send_request(client, 1, length, reply), 0);
    EXPECT_EQ(length, 16U);
    EXPECT_EQ(reply, (std::array<char, 64>{}));
}

TEST_F(transport, a_handler_that_throws_leaves_its_request_unanswered)
{
    const host::service service(serving({1}), [](const host::request& request) {
        if (request.func_id == 7) throw std::runtime_error("a handler's fault");
        return echo(request);
    });
    setenv("TARN_TRACE", (directory() / "trace").c_str(), 1);
    bmc_mc_client client;
    std::array<char, 64> reply{};
    unsigned int length = 16;
    EXPECT_NE(send_request(client, 7, length, reply), 0);
    EXPECT_EQ(send_request(client, 8, length, reply), 0);
    EXPECT_NE(read_file(directory() / "trace").find("request 1/7 not answered: a handler's fault"), std::string::npos);
}

TEST_F(transport, garbage_ends_its_own_connection_only)
{
    const host::service service(serving({1}), echo);
    const std::string garbage(300, 'g');
    host::message_header oversized{host::message_magic, host::message_kind::request, 1, 1, 0xFFFFFFFF, 16, 0};
    host::message_header wrong_room{host::message_magic, host::message_kind::request, 1, 1, 80, 0xFFFFFFFF, 0};
    host::message_header wrong_kind{host::message_magic, static_cast<host::message_kind>(77), 1, 1, 0, 0, 0};
    for (const std::string& sent : {garbage, std::string(reinterpret_cast<char*>(&oversized), sizeof oversized),
                                    std::string(reinterpret_cast<char*>(&wrong_room), sizeof wrong_room),
                                    std::string(reinterpret_cast<char*>(&wrong_kind), sizeof wrong_kind)}) {
        const raw_socket peer;
        peer.connect_to("TARN_SRV");
        peer.send_bytes(sent.data(), sent.size());
        EXPECT_EQ(peer.read_to_end(), "") << "the connection is closed without an answer";
    }
    bmc_mc_client client;
    std::array<char, 64> reply{};
    unsigned int length = 16;
    EXPECT_EQ(send_request(client, 3, length, reply), 0);
}

TEST_F(transport, a_truncated_request_is_dropped)
{
    std::atomic<int> handled = 0;
    const host::service service(serving({1}), [&](const host::request& request) {
        ++handled;
        return echo(request);
    });
    host::message_header header{host::message_magic, host::message_kind::request, 1, 1, 80, 16, 0};
    for (const std::size_t size : {sizeof header - 1, sizeof header, sizeof header + 79}) {
        std::string sent(reinterpret_cast<char*>(&header), sizeof header);
        sent.resize(size, 'x');
        const raw_socket peer;
        peer.connect_to("TARN_SRV");
        peer.send_bytes(sent.data(), sent.size());
        peer.end_sending();
        EXPECT_EQ(peer.read_to_end(), "");
    }
    EXPECT_EQ(handled, 0);
}

/// A service that answers every request with these bytes and closes the connection.
void expect_call_to_fail(const std::string& answer, const std::string& what)
{
    SCOPED_TRACE(what);
    const raw_socket door;
    door.listen_as("TARN_SRV");
    std::thread service([&] {
        const raw_socket peer(door.accept_one());
        peer.receive(sizeof(host::message_header) + 80);
        peer.send_bytes(answer.data(), answer.size());
    });
    bmc_mc_client client;
    std::array<char, 64> reply{};
    unsigned int length = 16;
    EXPECT_NE(send_request(client, 1, length, reply), 0);
    EXPECT_EQ(length, 16U);
    EXPECT_EQ(reply, (std::array<char, 64>{})) << "nothing is written";
    service.join();
    unlink(host::socket_path("TARN_SRV").c_str());
}

std::string reply_bytes(std::uint32_t magic, host::message_kind kind, std::uint32_t length, std::size_t record)
{
    const host::message_header header{magic, kind, 1, 1, length, 0, 0};
    return std::string(reinterpret_cast<const char*>(&header), sizeof header) + std::string(record, 'r');
}

TEST_F(transport, a_damaged_reply_fails_the_call)
{
    using host::message_kind;
    using host::message_magic;
    host::runtime_directory();
    expect_call_to_fail("", "closed without an answer");
    expect_call_to_fail(std::string(200, 'g'), "garbage");
    expect_call_to_fail(reply_bytes(message_magic + 1, message_kind::reply, 16, 16), "wrong magic");
    expect_call_to_fail(reply_bytes(message_magic, message_kind::request, 16, 16), "not a reply");
    expect_call_to_fail(reply_bytes(message_magic, message_kind::reply, 17, 17), "longer than the room");
    expect_call_to_fail(reply_bytes(message_magic, message_kind::reply, 0xFFFFFFF0, 16), "absurdly long");
    expect_call_to_fail(reply_bytes(message_magic, message_kind::reply, 16, 15), "truncated record");
    expect_call_to_fail(reply_bytes(message_magic, message_kind::reply, 8, 16), "more than it says");
    expect_call_to_fail(reply_bytes(message_magic, message_kind::reply, 16, 0).substr(0, 20), "truncated header");
}

TEST_F(transport, a_service_that_is_destroyed_can_be_made_again)
{
    for (int round = 0; round < 3; ++round) {
        const host::service service(serving({1}), echo);
        bmc_mc_client client;
        EXPECT_TRUE(client.bmc_mc_check_facade("TARN_SRV", 1));
        EXPECT_THROW(host::service(serving({1}), echo), std::runtime_error) << "one at a time";
    }
}

TEST_F(transport, the_runtime_directory_is_closed_to_others)
{
    std::filesystem::permissions(directory(), std::filesystem::perms::group_read, std::filesystem::perm_options::add);
    EXPECT_THROW(host::runtime_directory(), std::runtime_error);
}

}  // namespace
