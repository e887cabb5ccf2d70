#include "partfile/ini_file.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>

#include <sys/resource.h>
#include <sys/wait.h>

#include "partfile/memory_store.h"
#include "tests/partfile/temp_folder.h"

namespace zentrel {
namespace {

class IniFilesOnDisk : public testing::Test {
  protected:
    mode_t ModeOf(const std::string& path) {
        struct stat found {};
        return stat(path.c_str(), &found) == 0 ? found.st_mode & 07777U : 0;
    }

    TempFolder folder_;
    std::string file_ = folder_ / "part.ini";
    IniFiles ini_{AppPath(folder_.Path())};
};

TEST_F(IniFilesOnDisk, a_default_comes_back_without_the_spaces_at_its_end) {
    TempFolder::Write(file_, "[s]\nempty=\n");
    EXPECT_EQ(ini_.GetPrivateSetting(file_, "s", "k", "  one two  "), "  one two");
    EXPECT_EQ(ini_.GetPrivateSetting(file_, "t", "k", "x\t"), "x\t");
    EXPECT_EQ(ini_.GetPrivateSetting(folder_ / "missing.ini", "s", "k", "x"), "x");
    EXPECT_EQ(ini_.GetPrivateSetting(file_, "s", "empty", "x"), "");
}

TEST_F(IniFilesOnDisk, every_call_sees_what_others_wrote_a_moment_ago) {
    for (int i = 0; i < 200; ++i) {
        const std::string value = std::to_string(i % 10); // the file's size never changes
        TempFolder::Write(file_, "[s]\nk=" + value + "\n");
        ASSERT_EQ(ini_.GetPrivateSetting(file_, "s", "k", "?"), value);
    }
    std::filesystem::remove(file_);
    EXPECT_EQ(ini_.GetPrivateSetting(file_, "s", "k", "gone"), "gone");
}

TEST_F(IniFilesOnDisk, a_write_is_on_disk_when_it_returns_and_leaves_no_litter) {
    EXPECT_TRUE(ini_.SetPrivateSetting(file_, "s", "k", "1"));
    EXPECT_EQ(TempFolder::Read(file_), "[s]\r\nk=1\r\n");
    EXPECT_TRUE(ini_.SetPrivateSetting(file_, "s", "k", "2"));
    EXPECT_EQ(TempFolder::Read(file_), "[s]\r\nk=2\r\n");
    EXPECT_EQ(folder_.Count(), 1U);
}

TEST_F(IniFilesOnDisk, a_replacement_keeps_mode_owner_and_symbolic_links) {
    const std::string link = folder_ / "link.ini";
    const std::string second = folder_ / "second.ini";
    TempFolder::Write(file_, "[s]\nk=1\n");
    std::filesystem::create_symlink("part.ini", link);
    std::filesystem::create_symlink(link, second);
    ASSERT_EQ(chmod(file_.c_str(), 0640), 0);
    const bool superuser = geteuid() == 0;
    ASSERT_EQ(superuser ? chown(file_.c_str(), 1234, 4321) : 0, 0);

    EXPECT_TRUE(ini_.SetPrivateSetting(second, "s", "k", "2"));
    EXPECT_EQ(TempFolder::Read(file_), "[s]\nk=2\n");
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_TRUE(std::filesystem::is_symlink(second));
    EXPECT_EQ(ModeOf(file_), 0640U);
    struct stat found {};
    ASSERT_EQ(stat(file_.c_str(), &found), 0);
    EXPECT_EQ(found.st_uid, superuser ? 1234U : geteuid());
    EXPECT_EQ(found.st_gid, superuser ? 4321U : getegid());
}

TEST_F(IniFilesOnDisk, a_link_to_a_missing_file_creates_it_where_it_points) {
    std::filesystem::create_directory(folder_ / "bench");
    std::filesystem::create_symlink("bench/new.ini", file_);
    EXPECT_TRUE(ini_.SetPrivateSetting(file_, "s", "k", "1"));
    EXPECT_TRUE(std::filesystem::is_symlink(file_));
    EXPECT_EQ(TempFolder::Read(folder_ / "bench/new.ini"), "[s]\r\nk=1\r\n");
}

TEST_F(IniFilesOnDisk, a_new_file_follows_the_users_mask) {
    const mode_t before = umask(027);
    EXPECT_TRUE(ini_.SetPrivateSetting(file_, "s", "k", "1"));
    umask(before);
    EXPECT_EQ(ModeOf(file_), 0640U);
}

TEST_F(IniFilesOnDisk, a_failed_write_leaves_the_file_and_tells_why_once) {
    struct Obstacle {
        const char* what;
        std::string file;
        std::string reason;
    };
    const std::string readOnly = folder_ / "read_only.ini";
    TempFolder::Write(readOnly, "[s]\nk=1\n");
    ASSERT_EQ(chmod(readOnly.c_str(), 0444), 0);
    std::filesystem::create_directory(folder_ / "locked");
    const std::string inLocked = folder_ / "locked/part.ini";
    TempFolder::Write(inLocked, "[s]\nk=1\n");
    ASSERT_EQ(chmod((folder_ / "locked").c_str(), 0555), 0);
    std::filesystem::create_directory(folder_ / "folder.ini");
    ASSERT_EQ(mkfifo((folder_ / "pipe.ini").c_str(), 0600), 0);
    TempFolder::Write(folder_ / "huge.ini", "[s]\nk=1\n");
    std::filesystem::resize_file(folder_ / "huge.ini", 100'000'000);
    std::filesystem::create_symlink("loop.ini", folder_ / "loop.ini");

    const std::vector<Obstacle> obstacles = {
        {"read-only file", readOnly, "Permission denied"},
        {"read-only folder", inLocked, "Permission denied"},
        {"no folder", folder_ / "none/part.ini", "No such file or directory"},
        {"a folder", folder_ / "folder.ini", "Is a directory"},
        {"a pipe", folder_ / "pipe.ini", "Not a regular file"},
        {"100 MB", folder_ / "huge.ini", "Larger than 16 MB, too large for this file"},
        {"link to itself", folder_ / "loop.ini", "Too many levels of symbolic links"},
    };
    for (const Obstacle& obstacle : obstacles) {
        SCOPED_TRACE(obstacle.what);
        EXPECT_FALSE(ini_.SetPrivateSetting(obstacle.file, "s", "k", "2"));
        EXPECT_FALSE(ini_.SetPrivateSetting(obstacle.file, "s", "l", "2"));
        EXPECT_EQ(ini_.TakeWriteFailures(),
                  (std::vector<WriteFailure>{{obstacle.file, obstacle.reason}}));
        EXPECT_TRUE(ini_.TakeWriteFailures().empty());
        EXPECT_NE(ini_.GetPrivateSetting(obstacle.file, "s", "k", "1"), "2");
    }
    EXPECT_EQ(TempFolder::Read(readOnly), "[s]\nk=1\n");
    EXPECT_EQ(TempFolder::Read(inLocked), "[s]\nk=1\n");
    EXPECT_EQ(std::filesystem::file_size(folder_ / "huge.ini"), 100'000'000U);
    ASSERT_EQ(chmod((folder_ / "locked").c_str(), 0755), 0);
}

TEST_F(IniFilesOnDisk, what_cant_be_read_gives_defaults_at_once_and_the_reason) {
    std::filesystem::create_directory(file_);
    ASSERT_EQ(mkfifo((folder_ / "pipe.ini").c_str(), 0600), 0);
    TempFolder::Write(folder_ / "huge.ini", "[s]\nk=1\n");
    std::filesystem::resize_file(folder_ / "huge.ini", 100'000'000);
    for (const auto& file : {file_, folder_ / "pipe.ini", folder_ / "huge.ini"}) {
        EXPECT_EQ(ini_.GetPrivateSetting(file, "s", "k", "default"), "default");
        EXPECT_TRUE(ini_.ReadFailure(file)) << file;
        WriteScope save(ini_);
        EXPECT_FALSE(ini_.SetPrivateSetting(file, "s", "k", "1"));
        EXPECT_FALSE(save.Commit()) << "nothing of it was saved";
        EXPECT_EQ(ini_.TakeWriteFailures().size(), 1U);
    }
    EXPECT_TRUE(ini_.SetPrivateSetting(folder_ / "other.ini", "s", "k", "1"));
    EXPECT_EQ(ini_.ReadFailure(folder_ / "missing.ini"), std::nullopt);
}

TEST_F(IniFilesOnDisk, a_full_disk_leaves_the_old_file) {
    TempFolder::Write(file_, "[s]\nk=1\n");
    const pid_t child = fork();
    if (child == 0) {
        // Beyond a file size limit a write fails as on a full disk, instead of the signal.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{16, 16};
        setrlimit(RLIMIT_FSIZE, &limit);
        IniFiles ini{AppPath(folder_.Path())};
        const bool written = ini.SetPrivateSetting(file_, "s", "k", std::string(1000, 'x'));
        _exit(!written && ini.TakeWriteFailures().size() == 1 ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(TempFolder::Read(file_), "[s]\nk=1\n");
    EXPECT_EQ(folder_.Count(), 1U);
}

TEST_F(IniFilesOnDisk, a_program_killed_while_it_writes_leaves_a_whole_file) {
    const std::string filler(200'000, 'x');
    ASSERT_TRUE(ini_.SetPrivateSetting(file_, "s", "n", "0"));
    ASSERT_TRUE(ini_.SetPrivateSetting(file_, "s", "filler", filler));
    ASSERT_TRUE(ini_.SetPrivateSetting(file_, "s", "last", "0"));
    for (int round = 0; round < 40; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            IniFiles ini{AppPath(folder_.Path())};
            for (int i = 1;; ++i) {
                WriteScope scope(ini);
                ini.SetPrivateSetting(file_, "s", "n", std::to_string(i));
                ini.SetPrivateSetting(file_, "s", "last", std::to_string(i));
            }
        }
        usleep(static_cast<useconds_t>(500 + 700 * round));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        ASSERT_EQ(ini_.GetPrivateSetting(file_, "s", "filler", ""), filler);
        ASSERT_EQ(ini_.GetPrivateSetting(file_, "s", "n", "lost"),
                  ini_.GetPrivateSetting(file_, "s", "last", "torn"));
    }
}

class IniFilesInMemory : public testing::Test {
  protected:
    MemoryStore::Files files_;
    IniFiles ini_{AppPath("/opt/zentrel"), std::make_unique<MemoryStore>(files_)};
};

TEST_F(IniFilesInMemory, a_read_scope_reads_each_file_once) {
    files_.bytes["/a.ini"] = "[s]\nk=1\n";
    {
        const ReadScope outer(ini_);
        EXPECT_EQ(ini_.GetPrivateSetting("/a.ini", "s", "k", ""), "1");
        files_.bytes["/a.ini"] = "[s]\nk=2\n";
        const ReadScope inner(ini_);
        EXPECT_EQ(ini_.GetPrivateSetting("/a.ini", "s", "k", ""), "1");
        EXPECT_EQ(ini_.GetPrivateSetting("/b.ini", "s", "k", "none"), "none");
        EXPECT_EQ(ini_.GetPrivateSetting("/b.ini", "s", "k", "none"), "none");
    }
    EXPECT_EQ(files_.reads, 2);
    EXPECT_EQ(ini_.GetPrivateSetting("/a.ini", "s", "k", ""), "2");
}

TEST_F(IniFilesInMemory, a_write_scope_replaces_each_file_once_and_is_read_through) {
    files_.bytes["/a.ini"] = "[s]\nk=1\n";
    {
        WriteScope scope(ini_);
        {
            const WriteScope inner(ini_);
            EXPECT_TRUE(ini_.SetPrivateSetting("/a.ini", "s", "k", "2"));
        }
        EXPECT_TRUE(ini_.SetPrivateSetting("/a.ini", "s", "l", "3"));
        EXPECT_TRUE(ini_.SetPrivateSetting("/b.ini", "s", "k", "4"));
        EXPECT_EQ(ini_.GetPrivateSetting("/a.ini", "s", "k", ""), "2");
        EXPECT_EQ(files_.replacements, 0);
        EXPECT_TRUE(scope.Commit());
        EXPECT_EQ(files_.replacements, 2);
    }
    EXPECT_EQ(files_.replacements, 2);
    EXPECT_EQ(files_.bytes["/a.ini"], "[s]\nk=2\nl=3\n");
    EXPECT_EQ(files_.bytes["/b.ini"], "[s]\r\nk=4\r\n");
}

TEST_F(IniFilesInMemory, a_write_keeps_what_others_wrote_into_the_file_meanwhile) {
    files_.bytes["/a.ini"] = "[s]\nk=1\n";
    const ReadScope reading(ini_);
    EXPECT_EQ(ini_.GetPrivateSetting("/a.ini", "s", "k", ""), "1");
    files_.bytes["/a.ini"] = "[s]\nk=1\nother=5\n";
    EXPECT_TRUE(ini_.SetPrivateSetting("/a.ini", "s", "k", "2"));
    EXPECT_EQ(files_.bytes["/a.ini"], "[s]\nk=2\nother=5\n");
    EXPECT_EQ(ini_.GetPrivateSetting("/a.ini", "s", "k", ""), "2");
}

TEST_F(IniFilesInMemory, values_that_stand_already_cost_no_replacement) {
    files_.bytes["/a.ini"] = "[s]\nk=1\n";
    EXPECT_TRUE(ini_.SetPrivateSetting("/a.ini", "s", "k", "1"));
    EXPECT_EQ(files_.replacements, 0);
}

TEST_F(IniFilesInMemory, a_failed_save_is_told_once_and_forgotten_outside_its_scope) {
    files_.bytes["/a.ini"] = "[s]\nk=1\n";
    files_.failure = "No space left on device";
    {
        const ReadScope load(ini_);
        {
            WriteScope save(ini_);
            for (const auto* key : {"k", "l", "m"}) {
                ini_.SetPrivateSetting("/a.ini", "s", key, "2");
            }
            EXPECT_FALSE(save.Commit());
        }
        EXPECT_EQ(ini_.TakeWriteFailures(),
                  (std::vector<WriteFailure>{{"/a.ini", "No space left on device"}}));
        EXPECT_EQ(ini_.GetPrivateSetting("/a.ini", "s", "k", ""), "2"); // the load goes on with it
    }
    EXPECT_EQ(ini_.GetPrivateSetting("/a.ini", "s", "k", ""), "1");
}

TEST_F(IniFilesInMemory, a_path_that_no_file_can_have_reads_defaults_and_creates_nothing) {
    using namespace std::string_literals;
    for (const auto& path : {""s, "/a\0b.ini"s, ini_.Folder().PartFilePath("...."),
                             ini_.Folder().PartFilePath("../etc/x")}) {
        EXPECT_FALSE(ini_.SetPrivateSetting(path, "s", "k", "1"));
        EXPECT_EQ(ini_.GetPrivateSetting(path, "s", "k", "default"), "default");
    }
    EXPECT_TRUE(files_.bytes.empty());
    EXPECT_TRUE(ini_.TakeWriteFailures().empty());
}

TEST_F(IniFilesInMemory, thirty_thousand_new_keys_are_written_quickly) {
    WriteScope scope(ini_);
    for (int i = 0; i < 30'000; ++i) {
        ini_.SetPrivateSetting("/a.ini", "s", std::to_string(i), "x");
    }
    ASSERT_TRUE(scope.Commit());
    EXPECT_EQ(ini_.GetPrivateSetting("/a.ini", "s", "29999", ""), "x");
}

} // namespace
} // namespace zentrel
