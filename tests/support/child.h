// Processes of a test's own.
#ifndef QMV_TESTS_SUPPORT_CHILD_H
#define QMV_TESTS_SUPPORT_CHILD_H

#include <sys/mman.h>
#include <unistd.h>

#include <functional>
#include <new>

namespace qmv::test {

// A process that runs a part of the test and ends; what fails or is skipped there, fails or skips the test. No
// connection may be open when it starts: SQLite's do not survive a fork. It is killed with its owner, and when it takes
// several minutes.
class Child {
 public:
  explicit Child(const std::function<void()>& part);
  Child(const Child&) = delete;
  Child(Child&& other) noexcept : pid_(other.pid_) { other.pid_ = -1; }
  Child& operator=(const Child&) = delete;
  ~Child();

  // Waits until it has ended or stopped itself.
  void wait_for_end();
  void wait_until_stopped() const;

  bool is_running() const;
  void go_on() const;
  void kill();  // at once, as the kernel would

 private:
  pid_t pid_;
};

// Runs a part of a test in a process of its own.
void in_child(const std::function<void()>& part);

// A value that a test shares with the processes that it starts.
template <class Value>
class Shared {
 public:
  Shared() : value_(new (memory()) Value()) {}
  Shared(const Shared&) = delete;
  Shared& operator=(const Shared&) = delete;
  ~Shared() { munmap(value_, sizeof(Value)); }

  Value* operator->() const { return value_; }
  Value& operator*() const { return *value_; }

 private:
  static void* memory() {
    void* const made = mmap(nullptr, sizeof(Value), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return made == MAP_FAILED ? throw std::bad_alloc() : made;
  }

  Value* value_;
};

}  // namespace qmv::test

#endif
