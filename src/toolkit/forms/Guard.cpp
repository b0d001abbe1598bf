#include "toolkit/forms/Guard.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "data/value/Errors.h"
#include "toolkit/forms/Messages.h"

namespace tavoline {

namespace {

constexpr int pauseBetween = 1000;  // ms before a failure that is repeated by the next painting is told again

struct Failure {
  std::string sentence, detail;
  bool operator==(const Failure&) const = default;
};

Failure described(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const Error& error) {
    return {error.what(), error.detail()};
  } catch (const std::exception& error) {
    return {error.what(), {}};
  } catch (...) {
    return {"Une erreur inattendue s'est produite. L'opération en cours est abandonnée.", {}};
  }
}

void tell(const Failure& failure) {
  ShowMessage(failure.sentence, failure.detail);
}

struct Waiting {
  std::vector<Failure> failures;  // to be told, or being told
  Failure last;                   // told
  QElapsedTimer since;            // then
};

Waiting& waiting() {
  static Waiting all;
  return all;
}

std::optional<Failure> failureOf(const std::function<void()>& handler) {
  if (!handler) return std::nullopt;
  try {
    const auto running = handler;  // a handler may free the control that holds it
    running();
    return std::nullopt;
  } catch (...) {
    return described(std::current_exception());
  }
}

}  // namespace

bool guarded(const std::function<void()>& handler) {
  const auto failure = failureOf(handler);
  if (failure) tell(*failure);
  return !failure;
}

bool guardedToTellAfter(const std::function<void()>& handler) {
  const auto failure = failureOf(handler);
  if (failure) QTimer::singleShot(0, QCoreApplication::instance(), [what = *failure] { tell(what); });
  return !failure;
}

void tellLater(const std::exception_ptr& failure) {
  const Failure what = described(failure);
  Waiting& all = waiting();
  if (std::find(all.failures.begin(), all.failures.end(), what) != all.failures.end()) return;
  if (what == all.last && all.since.isValid() && all.since.elapsed() < pauseBetween) return;
  all.failures.push_back(what);
  QTimer::singleShot(0, QCoreApplication::instance(), [what] {
    tell(what);
    std::erase(waiting().failures, what);
    waiting().last = what;
    waiting().since.start();
  });
}

}  // namespace tavoline
