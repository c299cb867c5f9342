// The receiving end of the transport: listens under names and hands every message that arrives to a
// handler, whose answer goes back. What does not keep to the protocol ends its connection and no more.
#pragma once

#include "host/message.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/local/stream_protocol.hpp>

#include <atomic>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace norvane::host {

/// A message as it arrived.
struct incoming {
    const message_header& header;
    /// The record, `header.length` bytes, and behind it zeros: at least one, and as many as make 4096
    /// bytes together. The handler may write here.
    std::vector<char>& record;
    /// The name under which it arrived.
    const std::string& name;
    /// The process that sent it.
    int process;
};

/// What goes back. `record` is at most the header's `reply_room`; a longer one is not sent, and the
/// sender is told that there is no answer.
struct outgoing {
    delivery outcome = delivery::unanswered;
    std::vector<char> record;
};

class listener {
public:
    using handler = std::function<outgoing(incoming)>;
    /// Told when a peer has closed a connection.
    using farewell = std::function<void()>;

    /// On which thread messages are handled.
    enum class threading {
        /// All on one thread, one after the other.
        single,
        /// Each connection's on a thread of its own: one that takes long holds up its own peer only, and
        /// an answer costs no change of thread.
        per_connection,
    };

    listener(threading threads, handler handle, farewell left = {});
    /// Closes all connections and waits for the handlers under way.
    ~listener();
    listener(const listener&) = delete;
    listener& operator=(const listener&) = delete;

    /// Listens under the name. False if the name is taken.
    bool open(const std::string& name);
    void close(const std::string& name);

private:
    class session;
    struct door;

    /// A thread and what it runs, for one connection.
    struct worker {
        boost::asio::io_context context{1};
        std::thread thread;
        std::atomic<bool> done = false;
    };

    void accept(const std::shared_ptr<door>& entrance);
    worker& next_worker();
    static void run(worker& own);

    threading threading_;
    handler handle_;
    farewell left_;
    std::list<worker> workers_;
    boost::asio::io_context context_{1};
    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> work_;
    std::mutex mutex_;
    std::map<std::string, std::shared_ptr<door>> doors_;
    std::thread thread_;
};

/// Removes the sockets in the runtime directory that nobody listens on any more.
void sweep_sockets();

}  // namespace norvane::host
