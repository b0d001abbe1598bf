// Every session of a room's transcripts as a test.

#include "support/Session.h"

namespace tavoline {
namespace {

[[maybe_unused]] const bool known = test::registerTranscripts(TAVOLINE_CASES, playSession);

}  // namespace
}  // namespace tavoline
