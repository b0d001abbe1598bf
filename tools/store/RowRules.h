#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "data/store/Engine.h"

namespace tavoline::tool {

/// What is wrong with a store, one French sentence each.
using Findings = std::vector<std::string>;

void append(Findings& findings, Findings more);

/// The first column of each row of a query, as text; "(vide)" where nothing stands.
using Ask = std::function<std::vector<std::string>(const std::string& query)>;

/// The sentence with the first of `places`, and how many more there are; nothing without any.
void report(Findings& findings, const std::string& sentence, const std::vector<std::string>& places);

/// The sentence about a key or an index that a store lacks.
std::string tellMissing(const Definition& definition);

/// A statement in the words of an engine, which quotes the names that stand in [brackets].
std::string inWordsOf(const Engine& engine, std::string_view query);

/// Keys without doubles. All tables and columns have to be there.
Findings checkKeys(const Engine& engine, const Ask& ask);
/// What a store of any engine has to keep in its rows, read in its words: lines with their orders, totals
/// that add up, a first account. All tables and columns have to be there.
Findings checkRows(const Engine& engine, const Ask& ask);

}  // namespace tavoline::tool
