#include <iostream>
#include <filesystem>
#include "outils/examen/exam.h"
#include "outils/examen/guardian.h"
#include "outils/examen/command_line.h"
#include "outils/child_processes/programs.h"
int main(int argc,char**argv){
  if(argc>1&&std::string(argv[1])==guardian_option) return guard({argv+2,argv+argc});
  const command_line w=read_command_line(argc,argv);
  std::string self=std::filesystem::read_symlink("/proc/self/exe");
  for(auto&c:w.candidates){ exam_order o{.plant=w.plant,.plant_program=*find_program(w.plant),.scenario=w.scenario,.acceleration=w.acceleration,.patience_ms=w.patience_ms,.most_seconds=w.most_seconds,.memory_mib=w.memory_mib,.evidence=w.report,.name=c.name,.command=c.words};
   o.boxed = getenv("BOXED");
   verdict v=hold_exam(o,self); std::cout<<line_of(v)<<"  "<<v.cycles/v.wall_seconds<<" c/s\n"; }
}
