// The server of a share: a file system that passes each request through to the directory
// that it is mounted over, delays it as a network does, and counts it by kind.
//
// Requests are counted by their headers, as they arrive from the kernel.  Accesses of
// libfuse and of this file system to the underlying directory do not count.
//
// A request is counted and delayed if the calling process waits for it.  It does not wait
// for RELEASE, RELEASEDIR and FORGET.  FLUSH and GETXATTR are not supported: the kernel
// learns that from the first of each, which does not count, and sends no other.
//
// The kernel behaves like the client of a file server:
// - Names and attributes are cached.  A client of NFS or SMB caches them for 1 to 60
//   seconds.  Here they are cached for longer than any measure takes, so that no count
//   depends on the speed of the machine.
// - A name that does not exist is requested each time.  A client caches it for a second
//   (SMB), or until the directory changes (NFS).  Each probe for writing and each new
//   table directory changes it.
// - Listing a directory returns the names and attributes of its entries.
// - The kernel checks permissions by the cached attributes.  Creating or removing an
//   entry invalidates those of its directory.

#define FUSE_USE_VERSION 31

#include "share.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <fuse.h>
#include <fuse_lowlevel.h>
#include <linux/fuse.h>
#include <poll.h>
#include <set>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

const std::map<unsigned, const char *> request_names = {
    {FUSE_LOOKUP, "LOOKUP"},
    {FUSE_GETATTR, "GETATTR"},
    {FUSE_SETATTR, "SETATTR"},
    {FUSE_OPENDIR, "OPENDIR"},
    {FUSE_READDIRPLUS, "READDIRPLUS"},
    {FUSE_OPEN, "OPEN"},
    {FUSE_CREATE, "CREATE"},
    {FUSE_MKDIR, "MKDIR"},
    {FUSE_UNLINK, "UNLINK"},
    {FUSE_RMDIR, "RMDIR"},
    {FUSE_RENAME, "RENAME"},
    {FUSE_RENAME2, "RENAME"},
    {FUSE_READ, "READ"},
    {FUSE_WRITE, "WRITE"},
    {FUSE_FSYNC, "FSYNC"},
};

static int root; // the directory under the mount

// Converts a path in the share, which begins with "/", to one relative to the root.
static const char *relative(const char *path)
{
    return path[1] == '\0' ? "." : path + 1;
}

static int result_of(long result)
{
    return result < 0 ? -errno : static_cast<int>(result);
}

static int get_attributes(const char *path, struct stat *status, fuse_file_info *)
{
    return result_of(fstatat(root, relative(path), status, AT_SYMLINK_NOFOLLOW));
}

static int make_directory(const char *path, mode_t mode)
{
    return result_of(mkdirat(root, relative(path), mode));
}

static int remove_file(const char *path)
{
    return result_of(unlinkat(root, relative(path), 0));
}

static int remove_directory(const char *path)
{
    return result_of(unlinkat(root, relative(path), AT_REMOVEDIR));
}

static int rename_entry(const char *path, const char *new_path, unsigned flags)
{
    return result_of(renameat2(root, relative(path), root, relative(new_path), flags));
}

static int open_descriptor(const char *path, int flags, mode_t mode, fuse_file_info *opened)
{
    int file = openat(root, relative(path), flags, mode);
    opened->fh = static_cast<uint64_t>(file);
    return file < 0 ? -errno : 0;
}

static int open_file(const char *path, fuse_file_info *opened)
{
    return open_descriptor(path, opened->flags, 0, opened);
}

static int create_file(const char *path, mode_t mode, fuse_file_info *opened)
{
    return open_descriptor(path, opened->flags | O_CREAT, mode, opened);
}

static int descriptor(const fuse_file_info *opened)
{
    return static_cast<int>(opened->fh);
}

static int read_file(const char *, char *to, size_t size, off_t from, fuse_file_info *opened)
{
    return result_of(pread(descriptor(opened), to, size, from));
}

static int write_file(const char *, const char *block, size_t size, off_t from,
                      fuse_file_info *opened)
{
    return result_of(pwrite(descriptor(opened), block, size, from));
}

static int truncate_file(const char *path, off_t size, fuse_file_info *opened)
{
    if (opened != nullptr)
        return result_of(ftruncate(descriptor(opened), size));
    fuse_file_info own = {};
    int result = open_descriptor(path, O_WRONLY, 0, &own);
    if (result == 0) {
        result = result_of(ftruncate(descriptor(&own), size));
        close(descriptor(&own));
    }
    return result;
}

static int sync_file(const char *, int, fuse_file_info *opened)
{
    return result_of(fsync(descriptor(opened)));
}

static int release_file(const char *, fuse_file_info *opened)
{
    return result_of(close(descriptor(opened)));
}

static bool read_names(std::set<std::string> *names, const char *path)
{
    int file = openat(root, relative(path), O_RDONLY | O_DIRECTORY);
    DIR *stream = file < 0 ? nullptr : fdopendir(file);
    if (stream == nullptr)
        return false;
    while (const dirent *entry = readdir(stream))
        names->insert(entry->d_name);
    closedir(stream);
    return true;
}

// In a directory of the root, ".." leads into the mount.  Its requests would wait for this
// process forever.
static bool get_entry_attributes(struct stat *status, const char *path, const std::string &name)
{
    *status = {};
    status->st_mode = S_IFDIR;
    status->st_ino = 1; // entries without a number are ignored
    const std::string whole = std::string(relative(path)) + "/" + name;
    return name == "." || name == ".." ||
           fstatat(root, whole.c_str(), status, AT_SYMLINK_NOFOLLOW) == 0;
}

// Sorted by name, so that the number of replies does not depend on the disk.
static int read_directory(const char *path, void *reply, fuse_fill_dir_t add, off_t from,
                          fuse_file_info *, fuse_readdir_flags)
{
    std::set<std::string> names;
    if (!read_names(&names, path))
        return -errno;
    struct stat status;
    off_t next = 0;
    for (const std::string &name : names)
        if (++next > from && get_entry_attributes(&status, path, name) &&
            add(reply, name.c_str(), &status, next, FUSE_FILL_DIR_PLUS) != 0)
            break;
    return 0;
}

static void *configure(fuse_conn_info *connection, fuse_config *config)
{
    connection->want &= ~static_cast<unsigned>(FUSE_CAP_READDIRPLUS_AUTO | FUSE_CAP_SPLICE_READ);
    config->entry_timeout = config->attr_timeout = 24 * 60 * 60;
    config->negative_timeout = 0;
    config->hard_remove = 1;
    return nullptr;
}

static fuse_operations operations()
{
    fuse_operations known = {};
    known.init = configure;
    known.getattr = get_attributes;
    known.mkdir = make_directory;
    known.unlink = remove_file;
    known.rmdir = remove_directory;
    known.rename = rename_entry;
    known.truncate = truncate_file;
    known.open = open_file;
    known.create = create_file;
    known.read = read_file;
    known.write = write_file;
    known.fsync = sync_file;
    known.release = release_file;
    known.readdir = read_directory;
    return known;
}

// Older kernels request one page at a time, newer ones as much as the C library's buffer
// takes.
static void limit_listing(fuse_read_in *listing, const share_state *state)
{
    listing->size = std::min<uint32_t>(listing->size, state->listing);
}

static void receive(const fuse_buf *request, share_state *state)
{
    auto *header = static_cast<fuse_in_header *>(request->mem);
    if (request_names.count(header->opcode) == 0)
        return;
    if (static_cast<pid_t>(header->pid) == state->client)
        ++state->counts[header->opcode];
    if (header->opcode == FUSE_READDIRPLUS)
        limit_listing(reinterpret_cast<fuse_read_in *>(header + 1), state);
    if (state->delay > 0)
        usleep(static_cast<useconds_t>(state->delay));
}

static bool wait_for_request(fuse_session *session, int link)
{
    pollfd ends[] = {{link, POLLIN, 0}, {fuse_session_fd(session), POLLIN, 0}};
    while (poll(ends, 2, -1) < 0 && errno == EINTR)
        continue;
    return ends[0].revents == 0;
}

// One request at a time: all come from one process.
static void serve_requests(fuse_session *session, share_state *state, int link)
{
    fuse_buf request = {};
    while (wait_for_request(session, link)) {
        int length = fuse_session_receive_buf(session, &request);
        if (length > 0) {
            receive(&request, state);
            fuse_session_process_buf(session, &request);
        } else if (length != -EINTR && length != -EAGAIN) {
            break; // unmounted by somebody else
        }
    }
    free(request.mem);
}

int serve_share(const std::string &dir, share_state *state, int link)
{
    char name[] = "vek_share", option[] = "-odefault_permissions,fsname=vek_share";
    char *arguments[] = {name, option};
    fuse_args fuse_arguments = FUSE_ARGS_INIT(2, arguments);
    const fuse_operations known = operations();
    fuse *served = fuse_new(&fuse_arguments, &known, sizeof known, nullptr);
    umask(0);                             // the kernel applies the client's umask
    prctl(PR_SET_TIMERSLACK, 1, 0, 0, 0); // makes delays exact
    root = open(dir.c_str(), O_RDONLY | O_DIRECTORY);
    if (served == nullptr || root < 0 || fuse_mount(served, dir.c_str()) != 0)
        return 1;
    if (write(link, "", 1) == 1)
        serve_requests(fuse_get_session(served), state, link);
    fuse_unmount(served);
    fuse_destroy(served);
    return 0;
}
