#include "gtk/start/Door.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#include <utility>

namespace {

// How many may wait at once: each is a start of the program.
constexpr int MostWaiting = 128;
// Until a request is offered again that came at a bad moment, in ms.
constexpr unsigned Pause = 50;

int Listen(const FolderLock& lock) {
  const sockaddr_un address = lock.Socket();
  // What an earlier program left: nobody but the lock's owner comes here.
  ::unlink(address.sun_path);
  const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  // Nobody else's requests.
  const mode_t mask = ::umask(0177);
  const bool bound = ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  ::umask(mask);
  if (bound && ::listen(socket, MostWaiting) == 0) return socket;
  if (socket >= 0) ::close(socket);
  return -1;
}

}  // namespace

Door::Door(const FolderLock& lock) {
  if (const int socket = Listen(lock); socket >= 0) socket_.reset(g_socket_new_from_fd(socket, nullptr));
}

Door::~Door() {
  if (service_) g_socket_service_stop(service_.get());
}

void Door::Open(Receive receive) {
  receive_ = std::move(receive);
  if (!socket_) return;
  service_.reset(g_socket_service_new());
  callbacks_.On<gboolean(GSocketService*, GSocketConnection*, GObject*)>(
      service_.get(), "incoming", [this](auto*, GSocketConnection* connection, auto*) {
        Welcome(connection);
        return TRUE;
      });
  g_socket_listener_add_socket(G_SOCKET_LISTENER(service_.get()), socket_.get(), nullptr, nullptr);
}

void Door::Welcome(GSocketConnection* connection) {
  const Owned<GOutputStream> words(g_memory_output_stream_new_resizable());
  g_output_stream_splice_async(
      words.get(), g_io_stream_get_input_stream(G_IO_STREAM(connection)), G_OUTPUT_STREAM_SPLICE_CLOSE_TARGET,
      G_PRIORITY_DEFAULT, nullptr, Callbacks::Ended,
      callbacks_.Ending([this, held = std::shared_ptr<GSocketConnection>(Share(connection))](
                            GObject* source, GAsyncResult* result) {
        if (g_output_stream_splice_finish(G_OUTPUT_STREAM(source), result, nullptr) < 0) return;
        auto* memory = G_MEMORY_OUTPUT_STREAM(source);
        const std::string bytes(static_cast<const char*>(g_memory_output_stream_get_data(memory)),
                                g_memory_output_stream_get_data_size(memory));
        if (const std::optional<Request> request = Request::Unpack(bytes)) Hear(Share(held.get()), *request);
      }));
}

void Door::Hear(const Owned<GSocketConnection>& connection, const Request& request) {
  // Who has gone meanwhile comes again.
  if (g_socket_condition_check(g_socket_connection_get_socket(connection.get()), G_IO_HUP) & G_IO_HUP) return;
  const Reception reception = receive_(request);
  if (reception == Reception::Later) {
    callbacks_.After(Pause, [this, held = std::shared_ptr<GSocketConnection>(Share(connection.get())),
                             request] { Hear(Share(held.get()), request); });
    return;
  }
  // Without a word the other one goes on trying, for its address or for the folder.
  if (reception == Reception::Taken)
    g_output_stream_write(g_io_stream_get_output_stream(G_IO_STREAM(connection.get())), "y", 1, nullptr,
                          nullptr);
  g_io_stream_close(G_IO_STREAM(connection.get()), nullptr, nullptr);
}
