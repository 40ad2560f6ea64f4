#include "bibliocpp/IOshare.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/shm.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

namespace {

using names = std::list<std::string>;

// An area whose segment goes when the test ends, with a view of its record.
struct area {
  area(names inputs, names outputs) : server(inputs, outputs) {}
  ~area() { shmctl(server.memory_ident(), IPC_RMID, nullptr); }
  int lock_value() const {
    int value = -1;
    sem_getvalue(&record->mutex, &value);
    return value;
  }
  IOsharemem_server server;
  IO_controleur* record = static_cast<IO_controleur*>(shmat(server.memory_ident(), nullptr, 0));
};

double seconds_since(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(Server, leaves_a_private_segment_one_byte_larger_than_the_record) {
  names none;
  const int ident = IOsharemem_server(none, none).memory_ident();
  shmid_ds status{};
  ASSERT_EQ(0, shmctl(ident, IPC_STAT, &status));
  EXPECT_EQ(4561U, status.shm_segsz);
  EXPECT_EQ(0600, status.shm_perm.mode) << "not marked to be destroyed either";
  shmctl(ident, IPC_RMID, nullptr);
}

TEST(Server, opens_the_area_filled_and_free) {
  const area a({"pcA", std::string(49, 'n')}, {"A_DROITE"});
  EXPECT_EQ((std::pair{2, 1}), (std::pair{a.record->nb_entrees, a.record->nb_sorties}));
  EXPECT_EQ(std::string(49, 'n'), a.record->nom_input[1]);
  EXPECT_STREQ("", a.record->nom_input[2]);
  EXPECT_STREQ("A_DROITE", a.record->nom_output[0]);
  EXPECT_EQ(0, a.record->clock);
  EXPECT_EQ(1, a.lock_value());
}

TEST(Server, ignores_indexes_out_of_range_even_while_the_lock_is_taken) {
  area a({"x"}, {"Y"});
  a.record->output[1] = 8;
  EXPECT_EQ(0, a.server.output_value(-1) + a.server.output_value(1));
  sem_wait(&a.record->mutex);
  const auto start = std::chrono::steady_clock::now();
  a.server.setreset_input(-1, 1);
  a.server.setreset_input(1, 1);
  EXPECT_LT(seconds_since(start), 0.5);
  EXPECT_EQ(0, a.record->input[1]);
}

TEST(Client, sees_a_batch_once_and_then_the_end_at_every_call) {
  area a({"x", "y"}, {});
  a.record->output_clock = 12;
  IOsharemem_client client(a.server.memory_ident());
  EXPECT_EQ(0, a.server.get_outputs_clock());
  client.outputs_refresh();
  EXPECT_EQ(1, a.server.get_outputs_clock());
  EXPECT_EQ(0, client.receive());
  a.server.setreset_input(1, 1);
  EXPECT_EQ(0, client.input_is_set("y"));
  a.server.inputs_go();
  a.server.inputs_go();
  EXPECT_EQ(2, a.record->clock);
  EXPECT_EQ(1, client.receive());
  EXPECT_EQ(1, client.input_is_set("y"));
  EXPECT_EQ(0, client.receive());
  a.server.sharing_terminate();
  EXPECT_EQ((std::pair{-1, -1}), (std::pair{client.receive(), client.receive()}));
}

TEST(Client, compares_whole_names_and_takes_the_later_of_two) {
  area a({"x", "pcA", "x"}, {"O", "P", "O"});
  for (int i = 0; i < 3; ++i) a.server.setreset_input(i, 3 + i);
  IOsharemem_client client(a.server.memory_ident());
  a.server.inputs_go();
  ASSERT_EQ(1, client.receive());
  EXPECT_EQ((std::pair{5, 4}), (std::pair{client.input_is_set("x"), client.input_is_set("pcA")}));
  for (const std::string& wrong : names{"pca", "pcA ", "pc", "", {"pcA\0", 4}})
    EXPECT_EQ(0, client.input_is_set(wrong)) << wrong;
  client.setreset_output("O", 9);
  client.setreset_output("o", 8);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(i == 1 ? 0 : 9, a.server.output_value(i));
}

TEST(ClientDeathTest, refuses_identifiers_that_are_none) {
  EXPECT_EXIT(IOsharemem_client(0), testing::ExitedWithCode(1),
              "^IOshare: erreur sur partage memoire\nident_mem ==0 !\n\n$");
  EXPECT_EXIT(IOsharemem_client(-5), testing::ExitedWithCode(1),
              "^ident_mem=-5\nIOshare: erreur sur partage memoire\n"
              "shmat\\(\\) client refuse pour ident mem=-5\n\n$");
}

TEST(Lock, of_a_controller_killed_while_holding_it_is_taken_over_within_two_seconds) {
  area a({"x"}, {});
  const pid_t holder = fork();
  if (holder == 0) {
    sem_wait(&a.record->mutex);
    raise(SIGKILL);
  }
  waitpid(holder, nullptr, 0);
  const auto start = std::chrono::steady_clock::now();
  a.server.setreset_input(0, 1);
  EXPECT_EQ(1, a.lock_value());
  for (int cycle = 0; cycle < 16; ++cycle) {
    sem_trywait(&a.record->mutex);
    a.server.setreset_input(0, cycle);
  }
  EXPECT_LT(seconds_since(start), 2.0) << "a lock never released again costs patience only once";
  EXPECT_EQ(15, a.record->input[0]);
}

}  // namespace
