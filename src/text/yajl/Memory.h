// SPDX-License-Identifier: MIT
//
// Memory: the allocation functions that Reader and Writer give to YAJL, and the owner of every
// block that YAJL obtained through them. YAJL uses what its allocator returns without looking at
// it, so a null pointer must never reach it; and nothing may be thrown through its C frames, which
// have no unwind tables to rely on. So a failure leaves YAJL by longjmp, back into run(), and
// because YAJL's own structures may then be half made, its blocks are released here, from a list,
// and never by YAJL.

#pragma once

#include <csetjmp>
#include <cstddef>
#include <new>
#include <utility>

namespace ko::Orvid::yajl {

/// The memory of one YAJL handle. Not movable: YAJL keeps its address. Used by one thread.
class Memory {
public:
    Memory() = default;
    /// Releases every block.
    ~Memory() { release(); }
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;

    /// Runs `call`, in which YAJL may use the three functions below. Between `call` and those
    /// functions there may be no frame with anything to destroy; `call` itself must not throw.
    /// Throws std::bad_alloc when there is no memory: the YAJL handle is then as likely as not half
    /// changed, and may only be given up with release(). May be nested.
    template<typename Call>
    void run(Call call);

    /// Releases every block; YAJL must not be called on what lay in them.
    void release() noexcept;

    /// malloc, realloc and free for YAJL; `memory` is the address of a Memory. The first two do not
    /// return when there is no memory; what a failed reallocate was to grow stays as it was.
    /// reallocate grows a block by half at least, so that growing it in small steps stays linear.
    static void* allocate(void* memory, std::size_t size);
    static void* reallocate(void* memory, void* pointer, std::size_t size);
    static void deallocate(void* memory, void* pointer);

private:
    struct Block;
    Block* m_first = nullptr;
    std::jmp_buf* m_exit = nullptr;  // of the innermost run()
};

template<typename Call>
void Memory::run(Call call) {
    std::jmp_buf exit;
    std::jmp_buf* const outer = std::exchange(m_exit, &exit);
    if (setjmp(exit) != 0) {  // NOLINT(cert-err52-cpp): the class comment says why
        m_exit = outer;
        throw std::bad_alloc();
    }
    call();
    m_exit = outer;
}

}  // namespace ko::Orvid::yajl
