// A plugin of qemu-arm that counts how often each instruction is executed, and writes the counts when the
// program ends, to the file given as its argument: a line "ADDRESS COUNT" for each instruction, in
// hexadecimal and decimal. Debian has the emulator but not the header of its plugins; these are the parts
// used here, of version 1 of the interface.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <mutex>
#include <string>

extern "C" {

using qemu_plugin_id_t = std::uint64_t;
struct qemu_plugin_tb;
struct qemu_plugin_insn;
struct qemu_info_t;
enum qemu_plugin_op { QEMU_PLUGIN_INLINE_ADD_U64 };

void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t id,
                                           void (*callback)(qemu_plugin_id_t, qemu_plugin_tb*));
void qemu_plugin_register_atexit_cb(qemu_plugin_id_t id, void (*callback)(qemu_plugin_id_t, void*),
                                    void* data);
std::size_t qemu_plugin_tb_n_insns(qemu_plugin_tb const* block);
qemu_plugin_insn* qemu_plugin_tb_get_insn(qemu_plugin_tb const* block, std::size_t index);
std::uint64_t qemu_plugin_insn_vaddr(qemu_plugin_insn const* instruction);
void qemu_plugin_register_vcpu_insn_exec_inline(qemu_plugin_insn* instruction, qemu_plugin_op operation,
                                                void* counter, std::uint64_t increment);

__attribute__((visibility("default"))) extern int const qemu_plugin_version = 1;
__attribute__((visibility("default"))) int qemu_plugin_install(qemu_plugin_id_t id, qemu_info_t const* info,
                                                               int argc, char** argv);
}

namespace {

// Counters stay where they are when others come.
std::map<std::uint64_t, std::uint64_t>& counters() {
    static auto* const instance = new std::map<std::uint64_t, std::uint64_t>();
    return *instance;
}

std::mutex mutex;
std::string path;

void translate(qemu_plugin_id_t /*id*/, qemu_plugin_tb* block) {
    std::lock_guard<std::mutex> const lock(mutex);
    for (std::size_t i = 0; i < qemu_plugin_tb_n_insns(block); ++i) {
        qemu_plugin_insn* const instruction = qemu_plugin_tb_get_insn(block, i);
        std::uint64_t& counter = counters()[qemu_plugin_insn_vaddr(instruction)];
        qemu_plugin_register_vcpu_insn_exec_inline(instruction, QEMU_PLUGIN_INLINE_ADD_U64, &counter, 1);
    }
}

void writeCounts(qemu_plugin_id_t /*id*/, void* /*data*/) {
    if (std::FILE* const file = std::fopen(path.c_str(), "w")) {
        for (auto const& [address, count] : counters()) {
            std::fprintf(file, "%llx %llu\n", static_cast<unsigned long long>(address),
                         static_cast<unsigned long long>(count));
        }
        std::fclose(file);
    }
}

} // namespace

int qemu_plugin_install(qemu_plugin_id_t id, qemu_info_t const* /*info*/, int argc, char** argv) {
    // "out=FILE" as its only argument.
    char const* const value = argc == 1 ? std::strchr(argv[0], '=') : nullptr;
    if (value == nullptr) {
        return -1;
    }
    path = value + 1;
    qemu_plugin_register_vcpu_tb_trans_cb(id, translate);
    qemu_plugin_register_atexit_cb(id, writeCounts, nullptr);
    return 0;
}
