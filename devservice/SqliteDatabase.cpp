#include "SqliteDatabase.h"

#include <sqlite3.h>

#include <utility>

namespace merovanta::devservice {

void SqliteDatabase::Close::operator()(sqlite3* handle) const {
    sqlite3_close_v2(handle);
}

void SqliteDatabase::open(const std::filesystem::path& file) {
    sqlite3* handle = nullptr;
    const int result = sqlite3_open(file.c_str(), &handle);
    handle_.reset(handle);
    if (result != SQLITE_OK) return failLast();
    // Nobody else has it open, so that no memory is shared; what is deleted does not stay in the file.
    run("PRAGMA locking_mode = EXCLUSIVE");
    run("PRAGMA journal_mode = WAL");
    run("PRAGMA synchronous = NORMAL");
    run("PRAGMA secure_delete = ON");
}

SqliteStatement SqliteDatabase::prepare(std::string_view sql) {
    return {*this, sql};
}

void SqliteDatabase::begin() {
    if (!inTransaction()) run("BEGIN IMMEDIATE");
}

void SqliteDatabase::commit() {
    if (inTransaction()) run("COMMIT");
}

void SqliteDatabase::rollback() {
    if (handle_) sqlite3_exec(handle_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

bool SqliteDatabase::inTransaction() const {
    return handle_ && sqlite3_get_autocommit(handle_.get()) == 0;
}

std::int64_t SqliteDatabase::lastId() const {
    return sqlite3_last_insert_rowid(handle_.get());
}

int SqliteDatabase::changes() const {
    return sqlite3_changes(handle_.get());
}

std::optional<std::string> SqliteDatabase::takeProblem() {
    return std::exchange(problem_, std::nullopt);
}

void SqliteDatabase::fail(std::string problem) {
    if (!problem_) problem_ = std::move(problem);
}

void SqliteDatabase::failLast() {
    fail(handle_ ? sqlite3_errmsg(handle_.get()) : "out of memory");
}

}  // namespace merovanta::devservice
