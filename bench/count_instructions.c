/*
 * A plugin of qemu's user emulation that counts the instructions of the guest. Each getppid of the guest writes what
 * was counted since the one before, as a line of standard error. Debian does not package qemu's header, so that what is
 * used of its interface is declared here.
 */
#include <inttypes.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

#define EXPORT __attribute__((visibility("default")))

enum { kGetppidOnArm = 64, kInlineAdd64 = 0, kInterfaceVersion = 1 };

struct qemu_plugin_tb; /* a block of translated instructions, which runs from its first one to its last one */

size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb* block);
void qemu_plugin_register_vcpu_tb_trans_cb(uint64_t id, void (*translated)(uint64_t, struct qemu_plugin_tb*));
void qemu_plugin_register_vcpu_tb_exec_inline(struct qemu_plugin_tb* block, int operation, void* counter, uint64_t n);
void qemu_plugin_register_vcpu_syscall_cb(uint64_t id,
                                          void (*called)(uint64_t, unsigned, int64_t, uint64_t, uint64_t, uint64_t,
                                                         uint64_t, uint64_t, uint64_t, uint64_t, uint64_t));

EXPORT int qemu_plugin_version = kInterfaceVersion;
EXPORT int qemu_plugin_install(uint64_t id, const void* info, int argc, char** argv);

static uint64_t count;

static void translated(uint64_t id, struct qemu_plugin_tb* block) {
  (void)id;
  qemu_plugin_register_vcpu_tb_exec_inline(block, kInlineAdd64, &count, qemu_plugin_tb_n_insns(block));
}

static void called(uint64_t id, unsigned cpu, int64_t number, uint64_t a1, uint64_t a2, uint64_t a3, uint64_t a4,
                   uint64_t a5, uint64_t a6, uint64_t a7, uint64_t a8) {
  (void)id, (void)cpu, (void)a1, (void)a2, (void)a3, (void)a4, (void)a5, (void)a6, (void)a7, (void)a8;
  if (number != kGetppidOnArm) return;
  fprintf(stderr, "instructions: %" PRIu64 "\n", count);
  count = 0;
}

int qemu_plugin_install(uint64_t id, const void* info, int argc, char** argv) {
  (void)info, (void)argc, (void)argv;
  qemu_plugin_register_vcpu_tb_trans_cb(id, translated);
  qemu_plugin_register_vcpu_syscall_cb(id, called);
  return 0;
}
