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
class area {
 public:
  area(names inputs, names outputs) : server(inputs, outputs) {
    record = static_cast<IO_controleur*>(shmat(server.memory_ident(), nullptr, 0));
  }
  ~area() {
    shmdt(record);
    shmctl(server.memory_ident(), IPC_RMID, nullptr);
  }
  int lock_value() const {
    int value = -1;
    sem_getvalue(&record->mutex, &value);
    return value;
  }
  IOsharemem_server server;
  IO_controleur* record;
};

double seconds_since(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(Server, creates_a_private_segment_one_byte_larger_than_the_record) {
  area a({"x"}, {"Y", "Z"});
  shmid_ds status{};
  ASSERT_EQ(0, shmctl(a.server.memory_ident(), IPC_STAT, &status));
  EXPECT_EQ(4561U, status.shm_segsz);
  EXPECT_EQ(0600, status.shm_perm.mode & 0777);
  EXPECT_NE(0, a.server.memory_ident());
}

TEST(Server, opens_the_area_filled_and_free) {
  area a({"pcA", std::string(49, 'n')}, {"A_DROITE"});
  EXPECT_EQ(2, a.record->nb_entrees);
  EXPECT_EQ(1, a.record->nb_sorties);
  EXPECT_STREQ("pcA", a.record->nom_input[0]);
  EXPECT_EQ(std::string(49, 'n'), a.record->nom_input[1]);
  EXPECT_EQ('\0', a.record->nom_input[2][0]);
  EXPECT_STREQ("A_DROITE", a.record->nom_output[0]);
  EXPECT_EQ(0, a.record->clock);
  EXPECT_EQ(0, a.record->output_clock);
  EXPECT_EQ(1, a.lock_value());
}

TEST(Server, ignores_indexes_out_of_range_even_while_the_lock_is_taken) {
  area a({"x"}, {"Y"});
  a.record->output[0] = 7;
  a.record->output[1] = 8;
  EXPECT_EQ(7, a.server.output_value(0));
  EXPECT_EQ(0, a.server.output_value(-1));
  EXPECT_EQ(0, a.server.output_value(1));
  sem_wait(&a.record->mutex);
  const auto start = std::chrono::steady_clock::now();
  a.server.setreset_input(-1, 1);
  a.server.setreset_input(1, 1);
  EXPECT_LT(seconds_since(start), 0.5);
  sem_post(&a.record->mutex);
  EXPECT_EQ(0, a.record->input[0]);
  EXPECT_EQ(0, a.record->input[1]);
}

TEST(Server, its_clock_counts_batches_until_the_run_is_over) {
  area a({}, {});
  for (int i = 0; i < 3; ++i) a.server.inputs_go();
  EXPECT_EQ(3, a.record->clock);
  a.server.sharing_terminate();
  EXPECT_EQ(-1, a.record->clock);
}

TEST(Server, leaves_its_segment_to_the_controller) {
  names none;
  int ident = 0;
  { ident = IOsharemem_server(none, none).memory_ident(); }
  EXPECT_NE(reinterpret_cast<void*>(-1), shmat(ident, nullptr, 0));
  shmctl(ident, IPC_RMID, nullptr);
}

TEST(Client, sees_a_batch_once_and_then_the_end_at_every_call) {
  area a({"x", "y"}, {});
  IOsharemem_client client(a.server.memory_ident());
  EXPECT_EQ(0, client.receive());
  a.server.setreset_input(1, 1);
  EXPECT_EQ(0, client.input_is_set("y"));
  a.server.inputs_go();
  EXPECT_EQ(1, client.receive());
  EXPECT_EQ(1, client.input_is_set("y"));
  EXPECT_EQ(0, client.receive());
  a.server.sharing_terminate();
  EXPECT_EQ(-1, client.receive());
  EXPECT_EQ(-1, client.receive());
}

TEST(Client, compares_whole_names_and_takes_the_later_of_two) {
  area a({"x", "pcA", "x"}, {"O", "P", "O"});
  a.record->input[0] = 3;
  a.record->input[1] = 4;
  a.record->input[2] = 5;
  IOsharemem_client client(a.server.memory_ident());
  a.server.inputs_go();
  ASSERT_EQ(1, client.receive());
  EXPECT_EQ(5, client.input_is_set("x"));
  EXPECT_EQ(4, client.input_is_set("pcA"));
  for (const char* wrong : {"pca", "pcA ", "pc", ""}) EXPECT_EQ(0, client.input_is_set(wrong)) << wrong;
  EXPECT_EQ(0, client.input_is_set(std::string("pcA\0", 4)));
  client.setreset_output("O", 9);
  client.setreset_output("o", 8);
  EXPECT_EQ(9, a.server.output_value(0));
  EXPECT_EQ(0, a.server.output_value(1));
  EXPECT_EQ(9, a.server.output_value(2));
}

TEST(Client, announces_its_outputs_from_zero) {
  area a({}, {});
  a.record->output_clock = 12;
  IOsharemem_client client(a.server.memory_ident());
  EXPECT_EQ(0, a.server.get_outputs_clock());
  client.outputs_refresh();
  EXPECT_EQ(1, a.server.get_outputs_clock());
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
  EXPECT_LT(seconds_since(start), 2.0);
  EXPECT_EQ(1, a.record->input[0]);
  EXPECT_EQ(1, a.lock_value());
}

TEST(Lock, never_released_by_the_other_side_costs_its_patience_only_once) {
  area a({"x"}, {});
  const auto start = std::chrono::steady_clock::now();
  for (int cycle = 0; cycle < 16; ++cycle) {
    sem_trywait(&a.record->mutex);
    a.server.setreset_input(0, cycle);
  }
  EXPECT_LT(seconds_since(start), 2.0);
  EXPECT_EQ(15, a.record->input[0]);
}

}  // namespace
