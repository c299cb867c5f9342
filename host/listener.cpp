#include "host/listener.h"

#include "host/channel.h"
#include "host/runtime_directory.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/completion_condition.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>

namespace norvane::host {

namespace asio = boost::asio;
using asio::local::stream_protocol;
using boost::system::error_code;

namespace {

/// What a notify operation may read of a record, however short the record is.
constexpr std::size_t padded_record = 4096;

/// The pause after a connection that could not be accepted, such as for want of descriptors.
constexpr std::chrono::milliseconds pause_after_failure{10};

}  // namespace

struct listener::door {
    door(asio::io_context& context, std::string under) : acceptor(context), name(std::move(under)) {}
    stream_protocol::acceptor acceptor;
    std::string name;
};

class listener::session : public std::enable_shared_from_this<session> {
public:
    session(listener& owner, stream_protocol::socket socket, std::string name)
        : owner_(owner), socket_(std::move(socket)), name_(std::move(name)), process_(peer_process(socket_))
    {
    }
    ~session()
    {
        if (owner_.left_) owner_.left_();
    }
    session(const session&) = delete;
    session& operator=(const session&) = delete;

    void receive()
    {
        asio::async_read(socket_, asio::buffer(&header_, sizeof header_),
                         [self = shared_from_this()](error_code failure, std::size_t) {
                             if (!failure && sound(self->header_)) self->receive_record();
                         });
    }

private:
    void receive_record()
    {
        record_.assign(std::max<std::size_t>(padded_record, header_.length + 1), '\0');
        asio::async_read(socket_, asio::buffer(record_.data(), header_.length),
                         [self = shared_from_this()](error_code failure, std::size_t) {
                             if (!failure) self->answer();
                         });
    }

    void answer()
    {
        outgoing_ = owner_.handle_({header_, record_, name_, process_});
        if (outgoing_.outcome != delivery::answered || outgoing_.record.size() > header_.reply_room) {
            outgoing_ = {};
        }
        reply_header_ = {message_magic,
                         message_kind::reply,
                         header_.interface_id,
                         header_.func_id,
                         static_cast<std::uint32_t>(outgoing_.record.size()),
                         0,
                         static_cast<std::uint32_t>(outgoing_.outcome)};
        asio::async_write(socket_,
                          std::array{asio::const_buffer(&reply_header_, sizeof reply_header_),
                                     asio::const_buffer(asio::buffer(outgoing_.record))},
                          [self = shared_from_this()](error_code failure, std::size_t) {
                              if (!failure) self->receive();
                          });
    }

    listener& owner_;
    stream_protocol::socket socket_;
    std::string name_;
    int process_;
    message_header header_{};
    message_header reply_header_{};
    std::vector<char> record_;
    outgoing outgoing_;
};

listener::listener(threading threads, handler handle, farewell left)
    : threading_(threads),
      handle_(std::move(handle)),
      left_(std::move(left)),
      work_(context_.get_executor()),
      thread_([this] { context_.run(); })
{
}

listener::~listener()
{
    {
        const std::lock_guard lock(mutex_);
        for (const auto& [name, entrance] : doors_) std::remove(socket_path(name).c_str());
    }
    context_.stop();
    thread_.join();
    for (worker& each : workers_) {
        each.context.stop();
        if (each.thread.joinable()) each.thread.join();
    }
}

bool listener::open(const std::string& name)
{
    auto entrance = std::make_shared<door>(context_, name);
    const directory_lock making;
    error_code failure;
    entrance->acceptor.open(stream_protocol(), failure);
    if (!failure) entrance->acceptor.bind(socket_path(name), failure);
    if (!failure) entrance->acceptor.listen(asio::socket_base::max_listen_connections, failure);
    if (failure) return false;
    const std::lock_guard lock(mutex_);
    doors_[name] = entrance;
    asio::post(context_, [this, entrance] { accept(entrance); });
    return true;
}

void listener::close(const std::string& name)
{
    const std::lock_guard lock(mutex_);
    const auto found = doors_.find(name);
    if (found == doors_.end()) return;
    std::remove(socket_path(name).c_str());
    asio::post(context_, [entrance = found->second] {
        error_code ignored;
        entrance->acceptor.close(ignored);
    });
    doors_.erase(found);
}

listener::worker& listener::next_worker()
{
    workers_.remove_if([](worker& each) {
        if (!each.done) return false;
        if (each.thread.joinable()) each.thread.join();
        return true;
    });
    return workers_.emplace_back();
}

void listener::accept(const std::shared_ptr<door>& entrance)
{
    worker* const own = threading_ == threading::per_connection ? &next_worker() : nullptr;
    entrance->acceptor.async_accept(
        own == nullptr ? context_ : own->context,
        [this, entrance, own](error_code failure, stream_protocol::socket socket) {
            if (failure == asio::error::operation_aborted) return;
            if (failure) std::this_thread::sleep_for(pause_after_failure);
            if (!failure && same_user(socket)) {
                std::make_shared<session>(*this, std::move(socket), entrance->name)->receive();
                if (own != nullptr) own->thread = std::thread([own] { run(*own); });
            } else if (own != nullptr) {
                own->done = true;
            }
            accept(entrance);
        });
}

void listener::run(worker& own)
{
    own.context.run();
    own.done = true;
}

void sweep_sockets()
{
    const directory_lock sweeping;
    for (const auto& entry : std::filesystem::directory_iterator(runtime_directory())) {
        if (!entry.is_socket()) continue;
        asio::io_context context;
        stream_protocol::socket socket(context);
        error_code failure;
        socket.connect(stream_protocol::endpoint(entry.path().string()), failure);
        if (failure == asio::error::connection_refused) std::remove(entry.path().c_str());
    }
}

}  // namespace norvane::host
