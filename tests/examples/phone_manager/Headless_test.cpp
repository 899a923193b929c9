// The example application without a window: a process of its own, as a script runs it.

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QProcess>

namespace
{

class HeadlessTest : public testing::Test
{
protected:
    /// Runs it in the folder, and returns its exit code. The displays that are named cannot be opened.
    int run(const std::string& arguments, const std::string& locale = "en_US.UTF-8",
            const std::string& before = "")
    {
        QProcess process;
        process.setWorkingDirectory(QString::fromStdString(folder.path().string()));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove("QT_QPA_PLATFORM");
        environment.insert("DISPLAY", ":none");
        environment.insert("WAYLAND_DISPLAY", "none");
        environment.insert("LC_ALL", QString::fromStdString(locale));
        environment.insert("XDG_CONFIG_HOME", "/dev/null"); // where nothing can be kept
        environment.insert("XDG_RUNTIME_DIR", QString::fromStdString(folder.path().string()));
        process.setProcessEnvironment(environment);
        process.start("sh", {"-c", QString::fromStdString(before + " '" PHONE_MANAGER "' " + arguments)});
        process.waitForFinished();
        output = process.readAllStandardOutput().toStdString();
        errors = process.readAllStandardError().toStdString();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    TemporaryFolder folder;
    std::string output;
    std::string errors;
};

TEST_F(HeadlessTest, ExportsWhatItImports)
{
    folder.write("c.csv", "name,number\nM\xFCller,1\nService,2\n");
    folder.write("m.csv", "\uFEFFkind,number,text\nsent,1,\"a\nb\"\n");
    EXPECT_EQ(run("--import c.csv --charset windows-1252 --export to/here --import m.csv"), 0);
    EXPECT_EQ(output, "Imported contacts: 2, messages: 1, pictures: 0.\n"
                      "In “to/here” are contacts: 2, messages: 1, pictures: 0.\n");
    EXPECT_EQ(errors, "");
    EXPECT_EQ(folder.read("to/here/contacts.csv"),
              "\uFEFFName,Group,Number,Email\r\nMüller,,1,\r\nService,,2,\r\n");
    EXPECT_EQ(folder.read("to/here/messages.csv"),
              "\uFEFFKind,Name,Number,Date,Text\r\nSent,,1,,\"a\nb\"\r\n");

    EXPECT_EQ(run("--export to/here --import m.csv c.csv none.csv", "de_DE.UTF-8"), 1);
    EXPECT_EQ(output, "Importierte Kontakte: 2, Nachrichten: 1, Bilder: 0.\n"
                      "In „to/here(1)“ sind Kontakte: 2, Nachrichten: 1, Bilder: 0.\n");
    EXPECT_EQ(errors, "„c.csv“, Zeile 2: Einige Bytes sind in „UTF-8“ keine Zeichen.\n„none.csv“ lässt sich "
                      "nicht lesen.\n");

    folder.write("phone_manager.ini", "[General]\nTavori=de\n");
    EXPECT_EQ(run("--import none.csv --export out.d", "en_US.UTF-8", "XDG_CONFIG_HOME=$PWD"), 1);
    EXPECT_EQ(errors, "„none.csv“ lässt sich nicht lesen.\n") << "as chosen in the window";
}

TEST_F(HeadlessTest, TellsWhatCannotBeWritten)
{
    std::string table = "name,number\nfault\n";
    for (int row = 0; row < 1000; ++row) {
        table += row % 5 == 0 ? "fault\n" : "somebody,+49 30 23125 001\n";
    }
    folder.write("c.csv", table);
    // Files of at most 8 KiB
    EXPECT_EQ(run("--import c.csv --export out.d", "en_US.UTF-8", "trap '' XFSZ; ulimit -f 16;"), 1);
    EXPECT_EQ(output, "Imported contacts: 800, messages: 0, pictures: 0.\n"
                      "In “out.d” are contacts: 0, messages: 0, pictures: 0.\n");
    EXPECT_NE(errors.find("“c.csv”, line 998: There are 1 fields in 2 columns.\n"
                          "“contacts.csv” cannot be written: the disk is full, or closed to us.\n"
                          "“index.html” cannot be written: the disk is full, or closed to us.\n"),
              std::string::npos)
        << errors;
    EXPECT_TRUE(std::filesystem::is_empty(folder.path() / "out.d"));
}

TEST_F(HeadlessTest, WritesPicturesOfItsPages)
{
    folder.write("c.csv", "name,number\na,1\n");
    EXPECT_EQ(run("--snapshot pages c.csv"), 0);
    for (const char* page :
         {"start", "import", "contacts", "messages", "pictures", "export", "faults", "german"}) {
        EXPECT_TRUE(folder.read(std::string("pages/") + page + ".png").starts_with("\x89PNG")) << page;
    }
    EXPECT_EQ(run("--snapshot c.csv/inside"), 1);
    EXPECT_NE(errors.find("c.csv/inside/start.png cannot be written\n"), std::string::npos);
}

TEST_F(HeadlessTest, TakesNoWrongArguments)
{
    folder.write("c.csv", "name,number\na,1\n");
    for (const char* wrong :
         {"--import", "--export out", "--import c.csv", "--import --export out", "--import c.csv --export",
          "--import c.csv --export out more", "c.csv --import c.csv --export out",
          "--import c.csv --export out --export in", "--import c.csv --export out --charset",
          "--import c.csv --export out --all", "--charset UTF-8", "--snapshot", "--help"}) {
        EXPECT_EQ(run(wrong), 2) << wrong;
        EXPECT_TRUE(errors.starts_with("usage: phone_manager [FILE...] ")) << wrong << '\n' << errors;
    }
    EXPECT_EQ(run("--import c.csv --export out.d --charset klingon"), 1);
    EXPECT_EQ(errors, "“c.csv”: The character set “klingon” is not known.\n");
}

} // namespace
