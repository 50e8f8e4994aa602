#!/usr/bin/env python3
"""Random jobs that are written down as C++ and as job files: compiled, and flattened by the command,
each gives the images of the job itself.

    written_jobs_test.py RANDOM_JOBS BKOQ LIBRARY_FOLDERS COMPILER JOBS

LIBRARY_FOLDERS are separated by colons. Every second job is one of values that a job file can say. What it
cannot say is named on the first lines of the file, which then is not tried.
"""

import os
import subprocess
import sys
import tempfile

LAYOUTS = ("current", "previous")
MAIN = """
#include <bkoq/kit.h>

#include <cstdio>
#include <cstdlib>

int main(int, char** arguments) {
  BKQJob& job = makeJob(std::atoi(arguments[1]));
  void* root = nullptr;
  const bool isCurrent = arguments[2][0] == 'c';
  if ((isCurrent ? job.convertToBK2(root) : job.convertToBK2_old(root)) != 1) return 0;
  return bkoqWriteImage(root, isCurrent ? BKOQ_LAYOUT_CURRENT : BKOQ_LAYOUT_PREVIOUS, bkoqFileSink,
                        stdout, nullptr);
}
"""


def main():
    random_jobs, tool = (os.path.abspath(name) for name in sys.argv[1:3])
    folders, compiler, jobs = sys.argv[3].split(":"), sys.argv[4], int(sys.argv[5])
    environment = dict(os.environ, TZ="UTC0", LD_LIBRARY_PATH=sys.argv[3])
    with tempfile.TemporaryDirectory() as folder:
        images = [written(random_jobs, folder, seed) for seed in range(jobs)]
        program = compiled(compiler, folders, folder, jobs)
        whole = 0
        for seed, of_job in enumerate(images):
            for layout in LAYOUTS:
                done = subprocess.run([program, str(seed), layout], env=environment, check=True,
                                      stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
                assert done.stdout == of_job[layout], (seed, layout, "as C++")
            whole += as_job_file(tool, os.path.join(folder, str(seed)), of_job, environment)
        print(f"{jobs} jobs as C++, {whole} of them as job files")
        assert whole >= jobs // 8, whole


def written(random_jobs, folder, seed):
    """The images of a job, which is written into a folder of its own."""
    own = os.path.join(folder, str(seed))
    os.mkdir(own)
    plain = ["--plain"] if seed % 2 == 1 else []
    subprocess.run([random_jobs, "--seed", str(seed), *plain, "--write", own], check=True,
                   stderr=subprocess.DEVNULL)
    images = {}
    for layout in LAYOUTS:
        name = os.path.join(own, layout + ".image")
        images[layout] = b""
        if os.path.exists(name):
            with open(name, "rb") as file:
                images[layout] = file.read()
    return images


def compiled(compiler, folders, folder, jobs):
    source = os.path.join(folder, "jobs.cpp")
    with open(source, "w", encoding="ascii") as file:
        file.write("#include <bkoq/bkoq.h>\n")
        for seed in range(jobs):
            file.write(f'namespace job{seed} {{\n#include "{seed}/job.cpp"\n}}\n')
        cases = "".join(f"case {seed}: return *job{seed}::makeJob();\n" for seed in range(jobs))
        file.write(f"BKQJob& makeJob(int seed) {{\nswitch (seed) {{\n{cases}}}\nstd::abort();\n}}\n")
        file.write(MAIN)
    program = os.path.join(folder, "jobs")
    root = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    command = [compiler, "-m32", "-std=c++17", "-O0", "-include", "cstdlib", f"-I{root}/include", source, "-o",
               program]
    for name in folders:
        command.append("-L" + name)
    subprocess.run(command + ["-lbkoq", "-lbkrw", "-lbkoqkit"], check=True)
    return program


def as_job_file(tool, own, images, environment):
    """1 if the job file says all of the job."""
    name = os.path.join(own, "job.json")
    with open(name, encoding="ascii") as file:
        if file.read().startswith("//"):
            return 0
    for layout in LAYOUTS:
        target = os.path.join(own, "again.image")
        done = subprocess.run([tool, "flatten", name, "--layout", layout, "-o", target],
                              env=environment, capture_output=True, check=False)
        if not images[layout]:
            assert done.returncode != 0, (own, layout, "fails as it is")
            continue
        assert done.returncode == 0, (own, layout, done.stderr)
        with open(target, "rb") as file:
            assert file.read() == images[layout], (own, layout, "as a job file")
    return 1


if __name__ == "__main__":
    main()
