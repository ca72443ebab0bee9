// Asks the C library what the arguments say and prints the answers: what the harness is tested with. Built in several
// ways (file offsets, fortified calls, width of time), since each calls other functions of the library.

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <mntent.h>
#include <net/if.h>
#include <netdb.h>
#include <netinet/in.h>
#include <scsi/sg.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/sysinfo.h>
#include <sys/time.h>
#include <sys/utsname.h>
#include <unistd.h>
#include <utmp.h>
#include <vector>

static void printError(const char* what)
{
    const char* name = strerrorname_np(errno);
    printf("%s: %s\n", what, name == nullptr ? "?" : name);
}

static void printBytes(const unsigned char* bytes, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        printf("%02X%s", bytes[i], i + 1 < count ? " " : "\n");
}

static void printStream(FILE* stream)
{
    char line[64];
    while (fgets(line, sizeof line, stream) != nullptr)
        fputs(line, stdout);
    printf("[%s]\n", ferror(stream) != 0 ? strerrorname_np(errno) : feof(stream) != 0 ? "end" : "stopped");
}

static void showFile(const char* path)
{
    FILE* stream = fopen(path, "r");
    if (stream == nullptr)
        return printError("fopen");
    printStream(stream);
    fclose(stream);
}

static void showDescriptor(const char* path)
{
    const int descriptor = open(path, O_RDONLY);
    if (descriptor < 0)
        return printError("open");
    char text[64];
    ssize_t count;
    while ((count = read(descriptor, text, sizeof text)) > 0)
        fwrite(text, 1, static_cast<size_t>(count), stdout);
    printf("[%s]\n", count < 0 ? strerrorname_np(errno) : "end");
    close(descriptor);
}

static void openForWriting(const char* path)
{
    FILE* stream = fopen(path, "w");
    if (stream == nullptr)
        printError("fopen");
    else
        fclose(stream);
    const int descriptor = open(path, O_RDWR | O_CREAT | O_TRUNC, 0600);
    if (descriptor < 0)
        return printError("open");
    puts("opened");
    close(descriptor);
}

static void showFolder(const char* path)
{
    DIR* folder = opendir(path);
    if (folder == nullptr)
        return printError("opendir");
    errno = 0;
    while (const dirent* entry = readdir(folder))
        printf("%s%s\n", entry->d_name, entry->d_type == DT_DIR ? "/" : "");
    if (errno != 0)
        printError("readdir");
    closedir(folder);
}

static void showStatus(const char* path)
{
    struct stat status;
    if (stat(path, &status) != 0)
        return printError("stat");
    const mode_t kind = status.st_mode & S_IFMT;
    puts(kind == S_IFDIR ? "folder" : kind == S_IFREG ? "file" : kind == S_IFBLK ? "block" : "char");
    if (access(path, R_OK) != 0)
        printError("access");
}

static void readMemory(const char* address)
{
    unsigned char bytes[8] = {};
    FILE* stream = fopen("/dev/mem", "rb");
    if (stream == nullptr)
        return printError("fopen");
    if (fseeko(stream, static_cast<off_t>(strtoull(address, nullptr, 0)), SEEK_SET) != 0)
        printError("fseeko");
    const size_t count = fread(bytes, 1, sizeof bytes, stream);
    printf("%zu: ", count);
    printBytes(bytes, sizeof bytes);
    fclose(stream);
}

static void mapMemory(const char* address)
{
    const int descriptor = open("/dev/mem", O_RDONLY);
    const off_t start = static_cast<off_t>(strtoull(address, nullptr, 0));
    void* const mapping = mmap(nullptr, 0x2000, PROT_READ, MAP_SHARED, descriptor, start);
    if (mapping == MAP_FAILED)
        return printError("mmap");
    printBytes(static_cast<const unsigned char*>(mapping), 8);
    munmap(mapping, 0x2000);
    close(descriptor);
}

static void runCommand(const char* commandLine)
{
    FILE* stream = popen(commandLine, "r");
    if (stream == nullptr)
        return printError("popen");
    printStream(stream);
    printf("status %d\n", WEXITSTATUS(pclose(stream)));
}

static void showMounts(const char* path)
{
    FILE* table = setmntent(path, "r");
    if (table == nullptr)
        return printError("setmntent");
    while (const mntent* entry = getmntent(table))
        printf("%s %s %s\n", entry->mnt_fsname, entry->mnt_dir, entry->mnt_type);
    endmntent(table);
}

static void showFileSystem(const char* path)
{
    struct statvfs status;
    if (statvfs(path, &status) != 0)
        return printError("statvfs");
    printf("%lu %llu %llu %llu\n", status.f_frsize, static_cast<unsigned long long>(status.f_blocks),
           static_cast<unsigned long long>(status.f_bfree), static_cast<unsigned long long>(status.f_bavail));
}

static void showSystem(const char*)
{
    utsname names;
    if (uname(&names) != 0)
        printError("uname");
    else
        printf("%s|%s|%s|%s|%s\n", names.sysname, names.nodename, names.release, names.version, names.machine);
    struct sysinfo info;
    if (sysinfo(&info) != 0)
        printError("sysinfo");
    else
        printf("%lu %lu %lu %u\n", info.totalram, info.freeram, info.totalswap, info.mem_unit);
    printf("%d %d %ld %ld %d\n", get_nprocs(), get_nprocs_conf(), sysconf(_SC_NPROCESSORS_ONLN),
           sysconf(_SC_NPROCESSORS_CONF), getpagesize());
    timeval now{};
    gettimeofday(&now, nullptr);
    timespec precise{};
    clock_gettime(CLOCK_REALTIME, &precise);
    printf("%lld %lld %lld\n", static_cast<long long>(time(nullptr)), static_cast<long long>(now.tv_sec),
           static_cast<long long>(precise.tv_sec));
}

static void showAddress(int descriptor, unsigned long request, const char* name)
{
    ifreq record{};
    strncpy(record.ifr_name, name, sizeof record.ifr_name - 1);
    if (ioctl(descriptor, request, &record) != 0)
        return printError(name);
    const unsigned char* bytes = reinterpret_cast<const unsigned char*>(record.ifr_addr.sa_data);
    printBytes(request == SIOCGIFHWADDR ? bytes : bytes + 2, request == SIOCGIFHWADDR ? 6 : 4);
}

static void showNetwork(const char* records)
{
    const int descriptor = socket(AF_INET, SOCK_DGRAM, 0);
    if (descriptor < 0)
        return printError("socket");
    std::vector<ifreq> buffer(strtoul(records, nullptr, 0));
    ifconf list{};
    list.ifc_len = static_cast<int>(buffer.size() * sizeof(ifreq));
    list.ifc_req = buffer.data();
    if (ioctl(descriptor, SIOCGIFCONF, &list) != 0)
        return printError("SIOCGIFCONF");
    static constexpr unsigned long requests[] = {SIOCGIFADDR, SIOCGIFNETMASK, SIOCGIFHWADDR};
    for (size_t i = 0; i < static_cast<size_t>(list.ifc_len) / sizeof(ifreq); ++i) {
        puts(buffer[i].ifr_name);
        for (const unsigned long request : requests)
            showAddress(descriptor, request, buffer[i].ifr_name);
    }
    close(descriptor);
}

static void showHost(const char* dotted)
{
    unsigned char address[4];
    if (sscanf(dotted, "%hhu.%hhu.%hhu.%hhu", &address[0], &address[1], &address[2], &address[3]) != 4)
        return;
    const hostent* host = gethostbyaddr(address, sizeof address, AF_INET);
    puts(host == nullptr ? "no host" : host->h_name);
}

static void showLogin(const char*)
{
    utmp key{};
    key.ut_type = RUN_LVL;
    setutent();
    const utmp* record = getutid(&key);
    if (record == nullptr)
        puts("no record");
    else
        printf("%d %ld %s\n", record->ut_type, static_cast<long>(record->ut_tv.tv_sec), record->ut_line);
    endutent();
}

// A request as the caller lays it out: number, then the reply's first bytes.
static void control(const char* what)
{
    char path[128];
    unsigned long request = 0;
    size_t size = 0;
    if (sscanf(what, "%127[^,],%lx,%zu", path, &request, &size) != 3)
        return;
    const int descriptor = open(path, O_RDONLY | O_NONBLOCK);
    if (descriptor < 0)
        return printError("open");
    std::vector<unsigned char> buffer(1024);
    buffer[3] = 1; // one sector, where the request asks for it
    if (ioctl(descriptor, request, buffer.data()) != 0)
        printError("ioctl");
    else
        printBytes(buffer.data(), size);
    close(descriptor);
}

static void askScsi(const char* path)
{
    unsigned char command[6] = {0x12, 0, 0, 0, 0x60, 0};
    unsigned char reply[96] = {};
    unsigned char sense[32] = {};
    sg_io_hdr_t header{};
    header.interface_id = 'S';
    header.dxfer_direction = SG_DXFER_FROM_DEV;
    header.cmd_len = sizeof command;
    header.cmdp = command;
    header.dxfer_len = sizeof reply;
    header.dxferp = reply;
    header.mx_sb_len = sizeof sense;
    header.sbp = sense;
    const int descriptor = open(path, O_RDONLY);
    if (ioctl(descriptor, SG_IO, &header) != 0)
        printError("SG_IO");
    else
        printf("%.28s\n", reply + 8);
    close(descriptor);
}

static void streamScsi(const char* path)
{
    const int descriptor = open(path, O_RDWR);
    if (descriptor < 0)
        return printError("open");
    for (const char* command : {"\x12\0\0\0\xFF\0", "\x1A\0\4\0\xFF\0", "\x1A\0\3\0\xFF\0"}) {
        char request[36 + 6] = {};
        memcpy(request + 36, command, 6);
        int32_t reply[(36 + 255 + 3) / 4] = {};
        const ssize_t written = write(descriptor, request, sizeof request);
        const ssize_t count = read(descriptor, reply, 36 + 255);
        const char* const bytes = reinterpret_cast<const char*>(reply);
        printf("%zd %zd %d/%d/%02X: %.8s\n", written, count, reply[3], reply[4] >> 1 & 0x1F, bytes[20], bytes + 36 + 8);
    }
    close(descriptor);
}

int main(int count, char** arguments)
{
    static const struct {
        const char* name;
        void (*show)(const char* argument);
    } kActions[] = {{"file", showFile},          {"descriptor", showDescriptor}, {"write", openForWriting},
                    {"folder", showFolder},      {"status", showStatus},         {"memory", readMemory},
                    {"map", mapMemory},          {"command", runCommand},        {"mounts", showMounts},
                    {"statvfs", showFileSystem}, {"system", showSystem},         {"network", showNetwork},
                    {"host", showHost},          {"login", showLogin},           {"control", control},
                    {"scsi", askScsi},           {"stream", streamScsi}};
    for (int i = 1; i + 1 < count; i += 2)
        for (const auto& action : kActions)
            if (strcmp(arguments[i], action.name) == 0)
                action.show(arguments[i + 1]);
    return 0;
}
