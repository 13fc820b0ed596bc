#include "CallbackWatch.h"

#include <array>
#include <atomic>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <new>
#include <pthread.h>
#include <semaphore.h>
#include <string_view>
#include <sys/prctl.h>

// The C library's own, under the names that stay when the usual ones are taken by this file.
extern "C" {
void* __libc_malloc(std::size_t Bytes);               // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t N, std::size_t Each); // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* Old, std::size_t Bytes);   // NOLINT(bugprone-reserved-identifier)
void __libc_free(void* Old);                          // NOLINT(bugprone-reserved-identifier)
}

namespace {

enum Kinds : std::size_t { Allocation, Free, Lock, Open, OfLibrary, KindCount };

std::atomic<bool> Watching{false};
std::atomic<unsigned> WatchNumber{0};
std::array<char, 16> WatchedName{};
std::array<std::atomic<std::int64_t>, KindCount> Counts{};

/// The code of the sound libraries, found before the watch begins.
struct CodeRange {
    std::uintptr_t From = 0;
    std::uintptr_t To = 0;
};
std::array<CodeRange, 64> Libraries{};
std::size_t LibraryCount = 0;

int NoteLibrary(dl_phdr_info* Info, std::size_t, void*) {
    const std::string_view Name(Info->dlpi_name);
    if (Name.find("libpulse") == std::string_view::npos &&
        Name.find("libasound") == std::string_view::npos)
        return 0;
    for (std::size_t i = 0; i < Info->dlpi_phnum && LibraryCount < Libraries.size(); ++i) {
        const auto& Part = Info->dlpi_phdr[i];
        if (Part.p_type == PT_LOAD)
            Libraries.at(LibraryCount++) = {Info->dlpi_addr + Part.p_vaddr,
                                            Info->dlpi_addr + Part.p_vaddr + Part.p_memsz};
    }
    return 0;
}

bool ThisThreadIsWatched() noexcept {
    thread_local unsigned AskedAt = 0;
    thread_local bool Answer = false;
    if (const unsigned Now = WatchNumber.load(std::memory_order_relaxed); AskedAt != Now) {
        std::array<char, 16> Name{};
        ::prctl(PR_GET_NAME, Name.data());
        Answer = std::strcmp(Name.data(), WatchedName.data()) == 0;
        AskedAt = Now;
    }
    return Answer;
}

void Note(Kinds Kind, const void* Caller) noexcept {
    if (!Watching.load(std::memory_order_acquire) || !ThisThreadIsWatched())
        return;
    const auto At = reinterpret_cast<std::uintptr_t>(Caller);
    for (std::size_t i = 0; i < LibraryCount; ++i)
        if (At >= Libraries[i].From && At < Libraries[i].To)
            Kind = OfLibrary;
    Counts[Kind].fetch_add(1, std::memory_order_relaxed);
}

template <class Routine>
Routine* TheNext(const char* Name) noexcept {
    return reinterpret_cast<Routine*>(::dlsym(RTLD_NEXT, Name));
}

} // namespace

// What every part of this program calls, the libraries included.

extern "C" {

void* malloc(std::size_t Bytes) {
    Note(Allocation, __builtin_return_address(0));
    return __libc_malloc(Bytes);
}

void* calloc(std::size_t N, std::size_t Each) {
    Note(Allocation, __builtin_return_address(0));
    return __libc_calloc(N, Each);
}

void* realloc(void* Old, std::size_t Bytes) {
    Note(Allocation, __builtin_return_address(0));
    return __libc_realloc(Old, Bytes);
}

void free(void* Old) {
    if (Old != nullptr)
        Note(Free, __builtin_return_address(0));
    __libc_free(Old);
}

int pthread_mutex_lock(pthread_mutex_t* Mutex) {
    static const auto Next = TheNext<int(pthread_mutex_t*)>("pthread_mutex_lock");
    Note(Lock, __builtin_return_address(0));
    return Next(Mutex);
}

int sem_wait(sem_t* Semaphore) {
    static const auto Next = TheNext<int(sem_t*)>("sem_wait");
    Note(Lock, __builtin_return_address(0));
    return Next(Semaphore);
}

int open(const char* Name, int Flags, ...) {
    static const auto Next = TheNext<int(const char*, int, ...)>("open");
    va_list Rest;
    va_start(Rest, Flags);
    const mode_t Mode = (Flags & O_CREAT) != 0 ? va_arg(Rest, mode_t) : 0;
    va_end(Rest);
    Note(Open, __builtin_return_address(0));
    return Next(Name, Flags, Mode);
}

} // extern "C"

void* operator new(std::size_t Bytes) {
    Note(Allocation, __builtin_return_address(0));
    if (void* const Got = __libc_malloc(Bytes == 0 ? 1 : Bytes); Got != nullptr)
        return Got;
    throw std::bad_alloc();
}

void operator delete(void* Old) noexcept {
    if (Old != nullptr)
        Note(Free, __builtin_return_address(0));
    __libc_free(Old);
}

void operator delete(void* Old, std::size_t) noexcept {
    if (Old != nullptr)
        Note(Free, __builtin_return_address(0));
    __libc_free(Old);
}

namespace quoril::test {

CallbackWatch::CallbackWatch(const std::string& ThreadName) {
    ThreadName.copy(WatchedName.data(), WatchedName.size() - 1);
    WatchedName.at(std::min(ThreadName.size(), WatchedName.size() - 1)) = 0;
    LibraryCount = 0;
    ::dl_iterate_phdr(NoteLibrary, nullptr);
    for (auto& Each : Counts)
        Each.store(0);
    WatchNumber.fetch_add(1);
    Watching.store(true, std::memory_order_release);
}

CallbackWatch::~CallbackWatch() {
    Watching.store(false, std::memory_order_release);
}

std::int64_t CallbackWatch::Allocations() noexcept {
    return Counts[Allocation].load();
}

std::int64_t CallbackWatch::Frees() noexcept {
    return Counts[Free].load();
}

std::int64_t CallbackWatch::Locks() noexcept {
    return Counts[Lock].load();
}

std::int64_t CallbackWatch::Opens() noexcept {
    return Counts[Open].load();
}

std::int64_t CallbackWatch::OfLibraries() noexcept {
    return Counts[OfLibrary].load();
}

} // namespace quoril::test
