#include <velum/platform/detail/HostLookup.h>

#include <velum/platform/detail/SharedObject.h>

#include <netdb.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace vlm::platform {
namespace {

std::optional<Ipv4Address> Resolve(const char* name) noexcept {
  addrinfo wish{};
  wish.ai_family = AF_INET;
  wish.ai_socktype = SOCK_DGRAM;
  addrinfo* found = nullptr;
  if (::getaddrinfo(name, nullptr, &wish, &found) != 0) return std::nullopt;
  std::optional<Ipv4Address> address;
  if (found && found->ai_addrlen >= sizeof(sockaddr_in)) {
    address = reinterpret_cast<const sockaddr_in*>(found->ai_addr)->sin_addr.s_addr;
  }
  if (found) ::freeaddrinfo(found);
  return address;
}

/// What the caller and the thread share; whoever is done last destroys it.
struct Lookup {
  explicit Lookup(std::string host) : name(std::move(host)) {}

  const std::string name;
  std::mutex mutex;
  std::condition_variable finished;
  bool isFinished = false;
  std::optional<Ipv4Address> address;
};

void Run(const std::shared_ptr<Lookup>& lookup) {
  const std::optional<Ipv4Address> address = Resolve(lookup->name.c_str());
  const std::lock_guard lock(lookup->mutex);
  lookup->address = address;
  lookup->isFinished = true;
  lookup->finished.notify_one();
}

/// Has all signals blocked for as long as it lives: a thread that begins meanwhile blocks them too.
class SignalsBlocked {
 public:
  SignalsBlocked() {
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  SignalsBlocked(const SignalsBlocked&) = delete;
  SignalsBlocked& operator=(const SignalsBlocked&) = delete;
  ~SignalsBlocked() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

 private:
  sigset_t before_;
};

}  // namespace

std::optional<Ipv4Address> LookUpHost(const std::string& name, std::chrono::milliseconds limit) {
  const auto lookup = std::make_shared<Lookup>(name);
  KeepThisLibrary();
  try {
    const SignalsBlocked blocked;
    std::thread([lookup] { Run(lookup); }).detach();
  } catch (const std::system_error&) {
    return std::nullopt;
  }
  std::unique_lock lock(lookup->mutex);
  if (!lookup->finished.wait_for(lock, limit, [&] { return lookup->isFinished; })) {
    return std::nullopt;
  }
  return lookup->address;
}

}  // namespace vlm::platform
