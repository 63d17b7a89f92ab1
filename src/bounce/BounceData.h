#pragma once

#include <bouncecheck/classes/StringBuffer.h>

namespace bouncecheck {

class Entity;
class LogBase;

/// Reads the subject, without the tags of spam filters.
void readSubject(const Entity& message, StringBuffer& subject);

/// Reads the text that most checks search: the first body and what belongs to it.
void readBounceData(const Entity& message, StringBuffer& data, LogBase& log);

}  // namespace bouncecheck
