/* Runs a program and writes what it took to a file, as one JSON object.

     meter RESULT PROGRAM [ARGUMENT...]

   A process inherits the peak memory of the one that started it, and the clock of a script is coarse; this program is small
   and does nothing else. Processes that the program starts and waits for are included; memory is the largest peak of one
   process, not a sum. Exit status: 0 when the program could be started, whatever became of it. */
#include <stdio.h>
#include <string.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

static double seconds(struct timeval time) {
  return (double)time.tv_sec + (double)time.tv_usec / 1e6;
}

static double now(void) {
  struct timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return (double)time.tv_sec + (double)time.tv_nsec / 1e9;
}

int main(int argc, char **argv) {
  struct rusage usage;
  FILE *result;
  double start, wall;
  int status;
  pid_t child;

  if (argc < 3) {
    fputs("usage: meter RESULT PROGRAM [ARGUMENT...]\n", stderr);
    return 2;
  }
  memset(&usage, 0, sizeof usage);
  start = now();
  child = fork();
  if (child < 0) {
    perror("meter: fork");
    return 2;
  }
  if (child == 0) {
    execvp(argv[2], argv + 2);
    perror(argv[2]);
    _exit(127);
  }
  if (wait4(child, &status, 0, &usage) != child) {
    perror("meter: wait4");
    return 2;
  }
  wall = now() - start;
  result = fopen(argv[1], "w");
  if (result == NULL) {
    perror(argv[1]);
    return 2;
  }
  fprintf(result, "{\"wall\": %.6f, \"cpu\": %.6f, \"peak\": %ld, \"status\": %d}\n", wall,
          seconds(usage.ru_utime) + seconds(usage.ru_stime), usage.ru_maxrss * 1024L,
          WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status));
  return fclose(result) == 0 ? 0 : 2;
}
