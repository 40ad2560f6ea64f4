#include "bibliocpp/IOshare.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/shm.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstring>
#include <functional>
#include <thread>

#include "bibliocpp/signal_handles.h"

namespace {
bool no_segment_left = false;
}
// The system's own, until there are no segments left.
extern "C" int shmget(key_t key, size_t size, int shmflg) noexcept {
  return no_segment_left ? -1 : static_cast<int>(syscall(SYS_shmget, key, size, shmflg));
}

namespace {

using namespace std::chrono_literals;
using names = std::list<std::string>;

// Value, waiters and sharing, as the C library lays a semaphore out.
using lock_words = std::array<std::uint32_t, 3>;
constexpr lock_words free_and_private{1, 0, 0};

// An area whose segment goes when the test ends, with a view of its record.
struct area {
  area(names inputs, names outputs) : server(inputs, outputs) {}
  ~area() { shmctl(server.memory_ident(), IPC_RMID, nullptr); }
  lock_words lock() const {
    lock_words words{};
    std::memcpy(words.data(), &record->mutex, sizeof words);
    return words;
  }
  IOsharemem_server server;
  IO_controleur* record = static_cast<IO_controleur*>(shmat(server.memory_ident(), nullptr, 0));
};

TEST(Server, opens_the_area_filled_and_free) {
  const area a({"pcA", std::string(49, 'n')}, {"A_DROITE"});
  EXPECT_EQ((std::pair{2, 1}), (std::pair{a.record->nb_entrees, a.record->nb_sorties}));
  EXPECT_EQ(std::string(49, 'n'), a.record->nom_input[1]);
  EXPECT_STREQ("", a.record->nom_input[2]);
  EXPECT_STREQ("A_DROITE", a.record->nom_output[0]);
  EXPECT_EQ(0, a.record->clock);
  EXPECT_EQ(free_and_private, a.lock());
}

TEST(Area, whose_counts_are_anything_is_left_at_no_end) {
  area a({"x"}, {"Y"});
  a.record->output[1] = 8;
  a.server.setreset_input(1, 1);
  EXPECT_EQ(0, a.server.output_value(-1) + a.server.output_value(1) + a.record->input[1]);
  for (const auto& [count, believed] : {std::pair{0x5a5a5a5a, 41U}, std::pair{-1, 0U}}) {
    a.record->nb_entrees = a.record->nb_sorties = count;
    a.server.setreset_input(50, 1);
    EXPECT_EQ(0, a.server.output_value(0) + a.server.output_value(50));
    IOsharemem_client client(a.server.memory_ident());
    a.server.inputs_go();
    EXPECT_EQ(1, client.receive());
    EXPECT_EQ(2 * believed, client.input_names().size() + client.output_names().size());
  }
}

TEST(Client, sees_a_batch_once_and_then_the_end_at_every_call) {
  area a({"x"}, {});
  a.record->output_clock = 12;
  IOsharemem_client client(a.server.memory_ident());
  EXPECT_EQ(0, a.server.get_outputs_clock());
  client.outputs_refresh();
  EXPECT_EQ(1, a.server.get_outputs_clock());
  EXPECT_EQ(0, client.receive());
  a.server.inputs_go();
  a.server.inputs_go();
  EXPECT_EQ(2, a.record->clock);
  EXPECT_EQ(1, client.receive());
  EXPECT_EQ(0, client.receive());
  a.server.sharing_terminate();
  EXPECT_EQ((std::pair{-1, -1}), (std::pair{client.receive(), client.receive()}));
}

TEST(Client, compares_whole_names_and_takes_the_later_of_two) {
  area a({"x", "pcA", "x"}, {"O", "P", "O"});
  for (int i = 0; i < 3; ++i) a.server.setreset_input(i, 3 + i);
  IOsharemem_client client(a.server.memory_ident());
  const input_signal x(client, "x"), pcA(client, "pcA");
  output_signal P(client, "P");
  a.server.inputs_go();
  EXPECT_EQ(0, x + pcA + client.input_is_set("x"));
  ASSERT_EQ(1, client.receive());
  EXPECT_EQ((std::pair{5, 4}), (std::pair{client.input_is_set("x"), client.input_is_set("pcA")}));
  EXPECT_EQ((std::pair{5, 4}), (std::pair{int{x}, int{pcA}}));
  for (const std::string& wrong : names{"pca", "pcA ", "pc", "", {"pcA\0", 4}})
    EXPECT_EQ(0, client.input_is_set(wrong)) << wrong;
  client.setreset_output("O", 9);
  client.setreset_output("o", 8);
  P = 7;
  for (int i = 0; i < 3; ++i) EXPECT_EQ(i == 1 ? 7 : 9, a.server.output_value(i));
}

TEST(AreaDeathTest, that_cannot_be_had_ends_the_process) {
  EXPECT_EXIT((no_segment_left = true, area({}, {})), testing::ExitedWithCode(1),
              "^IOshare: erreur sur partage memoire\nshmat\\(\\) serveur refuse pour ident mem=-1\n\n$");
  EXPECT_EXIT(IOsharemem_client(0), testing::ExitedWithCode(1),
              "^IOshare: erreur sur partage memoire\nident_mem ==0 !\n\n$");
  EXPECT_EXIT(IOsharemem_client(-5), testing::ExitedWithCode(1),
              "^ident_mem=-5\nIOshare: erreur sur partage memoire\n"
              "shmat\\(\\) client refuse pour ident mem=-5\n\n$");
}

TEST(HandlesDeathTest, of_a_wrong_name_end_the_program_and_tell_the_right_one) {
  area a({"pcA", "wAplein"}, {"A_DROITE"}), empty({}, {});
  IOsharemem_client client(a.server.memory_ident()), of_empty(empty.server.memory_ident());
  const auto told = [](const char* locale, const std::function<void()>& ask, const std::string& message) {
    EXPECT_EXIT((setenv("LC_ALL", locale, 1), ask()), testing::ExitedWithCode(1), "^" + message + "\n$");
  };
  told(
      "en_GB", [&] { input_signal(client, "wAplien"); },
      "no input is named \"wAplien\"; the nearest name is \"wAplein\". The inputs are: pcA wAplein");
  told(
      "fr_FR", [&] { input_signal(client, "A_DROITE"); },
      "aucune entrée ne s'appelle \"A_DROITE\" : c'est une sortie. Les entrées sont : pcA wAplein");
  told(
      "en", [&] { output_signal(client, "PCa"); },
      "no output is named \"PCa\"; the nearest name is \"pcA\", an input. The outputs are: A_DROITE");
  told(
      "fr", [&] { output_signal(of_empty, ""); },
      "aucune sortie ne s'appelle \"\". Les sorties sont : \\(aucune\\)");
}

TEST(Lock, is_taken_where_the_contract_has_it_and_mended_whatever_was_written_there) {
  for (const lock_words& scribble : {lock_words{7, 7, 7}, lock_words{1, 0, 0x5a5a5a5a}}) {
    area a({"x"}, {"Y"});
    IOsharemem_client client(a.server.memory_ident());
    const auto after = [&](const auto& call) {
      std::memcpy(&a.record->mutex, scribble.data(), sizeof scribble);
      call();
      return a.lock();
    };
    EXPECT_EQ(free_and_private, after([&] { a.server.setreset_input(0, 1); }));
    EXPECT_EQ(free_and_private, after([&] { a.server.get_outputs_clock(); }));
    EXPECT_EQ(free_and_private, after([&] { client.outputs_refresh(); }));
    EXPECT_EQ(scribble, after([&] {
                a.server.setreset_input(-1, 1);
                a.server.setreset_input(1, 1);
                a.server.output_value(client.input_is_set("x"));
                client.setreset_output("Y", client.receive());
                a.server.inputs_go();
              }));
    EXPECT_EQ(free_and_private, after([&] { client.receive(); })) << "with news";
    EXPECT_EQ(scribble, after([&] { a.server.sharing_terminate(); }));
  }
}

TEST(Lock, of_a_controller_killed_while_holding_it_is_taken_over_within_two_seconds) {
  area a({"x"}, {}), other({"x"}, {});
  const pid_t holder = fork();
  if (holder == 0) {
    sem_wait(&a.record->mutex);
    raise(SIGKILL);
  }
  waitpid(holder, nullptr, 0);
  const auto start = std::chrono::steady_clock::now();
  a.server.setreset_input(0, 1);
  EXPECT_EQ(free_and_private, a.lock());
  for (int cycle = 0; cycle < 16; ++cycle) {
    sem_trywait(&a.record->mutex);
    a.server.setreset_input(0, cycle);
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, 2s) << "a lock never released costs patience once";
  EXPECT_EQ(15, a.record->input[0]);

  const auto waits_for_a_slow_holder = [](area& one) {
    std::atomic<bool> given = false;
    sem_wait(&one.record->mutex);
    const std::jthread slow([&] {
      std::this_thread::sleep_for(100ms);
      given = true;
      sem_post(&one.record->mutex);
    });
    one.server.setreset_input(0, 1);
    return given.load();
  };
  EXPECT_TRUE(waits_for_a_slow_holder(other)) << "the patience with one lock is not that with another";
  for (int n = 0; n < 1000; ++n) a.server.setreset_input(0, n);
  EXPECT_TRUE(waits_for_a_slow_holder(a)) << "trust comes back";
}

}  // namespace
