// The objects that an engine has given out and not yet taken back.
//
// A host uses an engine in sessions, from its Initialize to its UnInitialize, on one thread and
// nested as it likes. Objects that are not destroyed when a thread's outermost session ends are
// left behind: they can still be asked for their last error, closed and destroyed, until the thread
// starts another session or ends. Then they are reclaimed.
//
//   using Documents = Registry<TExpaDoc>;
//   void ExpaInitialize() { Documents::BeginSession(); }
//   void ExpaUnInitialize() { Documents::EndSession(); }
//   TExpaDoc* document = Documents::Add(std::make_unique<TExpaDoc>());
//   Documents::Destroy(document);
//
// Objects may be used, and destroyed, on other threads than the one that made them. Those that were
// made outside of every session are reclaimed by nobody.
#ifndef TARNIX_ENGINES_SUPPORT_CONTRACT_REGISTRY_H_
#define TARNIX_ENGINES_SUPPORT_CONTRACT_REGISTRY_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <utility>

namespace TarnixTools::engines {

template <typename Object>
class Registry {
 public:
  static void BeginSession() noexcept {
    Session& session = OfThread();
    if (session.depth++ == 0) {
      Reclaim(std::exchange(session.ended, 0));
    }
  }

  // Nothing happens when no session has begun.
  static void EndSession() noexcept {
    Session& session = OfThread();
    if (session.depth > 0 && --session.depth == 0) {
      session.ended = std::exchange(session.number, 0);
    }
  }

  static Object* Add(std::unique_ptr<Object> object) {
    Object* handle = object.get();
    const std::lock_guard lock(Get().mutex_);
    Get().objects_.emplace(handle, Entry{std::move(object), Get().NumberOf(OfThread())});
    return handle;
  }

  // False for what is no object, or none any more.
  static bool Destroy(const Object* handle) noexcept {
    typename Objects::node_type destroyed;  // outlives the lock, for destroying may take long
    const std::lock_guard lock(Get().mutex_);
    destroyed = Get().objects_.extract(handle);
    return !destroyed.empty();
  }

  static std::size_t Count() noexcept {
    const std::lock_guard lock(Get().mutex_);
    return Get().objects_.size();
  }

 private:
  struct Entry {
    std::unique_ptr<Object> object;
    std::uint64_t session;  // 0: made outside of every session
  };

  using Objects = std::unordered_map<const Object*, Entry>;

  // What a thread knows of its sessions. One without objects has no number.
  struct Session {
    ~Session() { Reclaim(ended); }

    int depth = 0;
    std::uint64_t number = 0;
    std::uint64_t ended = 0;  // the one that has left objects behind
  };

  // Never destroyed: threads give back their sessions until the very end of the process.
  static Registry& Get() {
    static Registry& registry = *new Registry;
    return registry;
  }

  static Session& OfThread() {
    static thread_local Session session;
    return session;
  }

  static void Reclaim(std::uint64_t session) noexcept {
    while (session != 0 && ReclaimOne(session)) {
    }
  }

  static bool ReclaimOne(std::uint64_t session) noexcept {
    typename Objects::node_type reclaimed;  // outlives the lock
    const std::lock_guard lock(Get().mutex_);
    Objects& objects = Get().objects_;
    const auto found = std::find_if(objects.begin(), objects.end(), [session](const auto& entry) {
      return entry.second.session == session;
    });
    if (found != objects.end()) {
      reclaimed = objects.extract(found);
    }
    return !reclaimed.empty();
  }

  std::uint64_t NumberOf(Session& session) {
    if (session.depth > 0 && session.number == 0) {
      session.number = ++last_number_;
    }
    return session.number;
  }

  std::mutex mutex_;
  Objects objects_;
  std::uint64_t last_number_ = 0;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CONTRACT_REGISTRY_H_
