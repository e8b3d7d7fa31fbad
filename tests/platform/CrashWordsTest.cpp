// Processes that crash, each split off from this one, and what they still say.
#include <arpa/inet.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>

#include "platform/linux/CrashWords.h"
#include "tests/Test.h"

namespace tvx::test {
namespace {

class Listener {
 public:
  Listener() : socket_(socket(AF_INET, SOCK_DGRAM, 0)) {
    sockaddr_in any{};
    any.sin_family = AF_INET;
    any.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof any;
    EXPECT_EQ(bind(socket_, reinterpret_cast<sockaddr*>(&any), size), 0);
    EXPECT_EQ(getsockname(socket_, reinterpret_cast<sockaddr*>(&any), &size), 0);
    target_ = {INADDR_LOOPBACK, ntohs(any.sin_port)};
  }
  ~Listener() { close(socket_); }
  const UdpTarget& Target() const { return target_; }
  // What has arrived, each in brackets.
  std::string Heard() const {
    std::string all;
    char bytes[600];
    for (ssize_t size; (size = recv(socket_, bytes, sizeof bytes, MSG_DONTWAIT)) >= 0;)
      all += '[' + std::string(bytes, static_cast<std::size_t>(size)) + ']';
    return all;
  }

 private:
  int socket_;
  UdpTarget target_;
};

// Keeps these as the last words.
void Prepare(CrashWords& words, const UdpTarget& target, const std::vector<std::string>& texts) {
  std::vector<ByteView> datagrams;
  for (const std::string& text : texts)
    datagrams.emplace_back(reinterpret_cast<const Byte*>(text.data()), text.size());
  words.Prepare(target, datagrams);
}

// A function that needs more and more of its stack.
int Deeper(int depth) {
  volatile char room[4096];
  std::memset(const_cast<char*>(room), depth, sizeof room);
  return depth < 0 ? 0 : Deeper(depth + 1) + room[depth % 4096];
}

struct Death {
  const char* how;
  void (*dies)();
  int signal;  // that it dies of, where no sanitizer sees to it; 0: it ends with a status of its own
  bool sanitized = false;
};

const Death kDeaths[] = {
    {"fault",
     [] {
       void* page = mmap(nullptr, 1, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
       *static_cast<volatile char*>(page) = 1;
     },
     SIGSEGV, true},
    {"stack", [] { std::_Exit(Deeper(0)); }, SIGSEGV, true},
    {"abort", [] { std::abort(); }, SIGABRT},
    {"illegal", [] { raise(SIGILL); }, SIGILL, true},
    {"bus", [] { kill(getpid(), SIGBUS); }, SIGBUS, true},
    {"number", [] { raise(SIGFPE); }, SIGFPE, true},
    {"terminal", [] { raise(SIGHUP); }, SIGHUP},
    {"core", [] { raise(SIGQUIT); }, SIGQUIT},
    {"exit", [] { std::exit(7); }, 0},
};

// Runs it in a process of its own; its status as waitpid has it.
template <typename Life>
int Fate(Life&& life) {
  const pid_t child = fork();
  if (child == 0) {
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    // A shell starts what goes on in the background with these ignored.
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) std::signal(signal, SIG_DFL);
    [[maybe_unused]] const auto quiet = freopen("/dev/null", "w", stderr);
    life();
    std::_Exit(99);
  }
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return status;
}

TEST(CrashWords, AreSaidWhateverAProgramDiesOf) {
  const std::string tooLong(CrashWords::kLongest + 1, 'x');
  for (const Death& death : kDeaths) {
    SCOPED_TRACE(death.how);
    const Listener listener;
    const int status = Fate([&] {
      CrashWords words({});
      CrashWords::CatchFatalSignals();
      Prepare(words, listener.Target(), {"old"});
      Prepare(words, listener.Target(), {"roll", tooLong, "pitch"});
      death.dies();
    });
    EXPECT_EQ(listener.Heard(), "[roll][pitch]");
#if defined(__SANITIZE_ADDRESS__)
    if (death.sanitized) continue;
#endif
    EXPECT_EQ(WIFSIGNALED(status) ? WTERMSIG(status) : 0, death.signal);
    EXPECT_TRUE(death.signal != 0 || WEXITSTATUS(status) == 7);
  }
}

// The handler of before still has its turn, and an ignored signal ends nobody.
TEST(CrashWords, StandInNobodysWay) {
  const Listener listener;
  const int status = Fate([&] {
    std::signal(SIGFPE, [](int) { std::_Exit(42); });
    std::signal(SIGHUP, SIG_IGN);
    CrashWords words({});
    CrashWords::CatchFatalSignals();
    Prepare(words, listener.Target(), {"roll"});
    raise(SIGHUP);
    raise(SIGFPE);
  });
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 42);
  EXPECT_EQ(listener.Heard(), "[roll]");
  Fate([&] {  // given back before
    CrashWords words({});
    CrashWords::CatchFatalSignals();
    Prepare(words, listener.Target(), {"roll"});
    words.Prepare({}, {});
    raise(SIGQUIT);
  });
  EXPECT_EQ(listener.Heard(), "");
}

}  // namespace
}  // namespace tvx::test
