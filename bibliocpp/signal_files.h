#pragma once
// Records as files: value change dumps (VCD), which logic analysers and wave viewers read, and tables of
// changes (CSV).
//
// In a VCD of ours time counts in microseconds. Inputs stand in the scope `entrees`, outputs in `sorties`,
// each a wire of one bit as long as it has been 0 and 1 only, an integer of 32 bits otherwise. The scope
// `zone` holds `lot`, the plant's clock at each change, and `manques`, the number of batches missed so far.
// Bytes that a name in a VCD cannot hold, blanks above all, become "_".
//
// A CSV begins with the line "time_s,batch,direction,signal,value", then has one for each change; direction
// is "input" or "output", or "missed", and then the signal is empty and the value the number of batches.

#include <cstdint>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "bibliocpp/signal_record.h"

// Its text names the file and the reason, in the language of the locale.
struct signal_file_error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Both write the whole record, or throw a signal_file_error: then a file that was not there is not there
// afterwards, and one that was holds what it held, unless the disk itself fails midway. An existing file
// keeps its inode, and with it its owner, mode and links.
void write_vcd(const std::string& path, const signal_record& record);
void write_csv(const std::string& path, const signal_record& record);

// Reads a VCD, of ours or another's. Of another's, each variable is a signal with its scopes before its
// name ("top.unit.name"), an output when one of the scopes is called `sorties`. Reals are rounded, values
// that need more than 32 bits become the greatest or the least; x and z are `undefined_value`, or nothing
// as long as the signal had no value; texts are passed over. Times are rounded down to microseconds.
// Throws a signal_file_error: with the line where what is read is no VCD, and for more than 1 GiB.
signal_record read_vcd(const std::string& path);
constexpr std::int32_t undefined_value = INT32_MIN;

// Writers for a run that is still going on. The stream is the caller's, outlives the writer, and keeps what
// went wrong: ask it after flushing. Flushed, it is a whole file that ends where the run has come to; so is
// what a program that is killed leaves. Times must not fall.
class vcd_writer {
 public:
  // Writes the declarations. On a stream in which one cannot go back (a pipe) every signal is an integer;
  // elsewhere a wire is declared anew, in its place, when it takes a value beyond 0 and 1.
  vcd_writer(std::ostream& a_stream, const std::vector<recorded_signal>& signals);
  void add(std::size_t signal, const signal_change& change);
  void miss(const missed_batches& some, std::int64_t clock);
  void reach(std::int64_t time_us);

 private:
  void value(const std::string& code, std::int64_t value, int bits);
  void batch(std::int64_t clock);

  struct variable {
    std::string code;
    std::streamoff declared_at;  // where its type stands
    bool is_wire;
  };
  std::ostream& out;
  std::vector<variable> variables;
  std::int64_t time = -1, last_clock = INT64_MIN, missed = 0;
};

class csv_writer {
 public:
  csv_writer(std::ostream& a_stream, std::vector<recorded_signal> some_signals);
  void add(std::size_t signal, const signal_change& change);
  void miss(const missed_batches& some, std::int64_t clock);
  void reach(std::int64_t) {}  // nothing to say

 private:
  std::ostream& out;
  std::vector<recorded_signal> signals;
};
