#include <Zelmar01/tasks/service/store/RunnerProcess.h>

int main(int argc, char **argv)
{
    return Zelmar01::RunnerMain(argc, argv);
}
