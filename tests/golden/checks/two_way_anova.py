# Independent check of a mnuTwoway golden case: exact rational sums of
# squares and mpmath F tails for the sheet of CASE_DIR/sheet.csv
# (response, row factor, column factor):  python3 two_way_anova.py SHEET
import mpmath as mp, csv, sys
from fractions import Fraction as F
mp.mp.dps=30
rows=[r for r in csv.reader(open(sys.argv[1]))]
A=sorted(set(r[1] for r in rows)); B=sorted(set(r[2] for r in rows))
cells={(a,b):[F(r[0]) for r in rows if r[1]==a and r[2]==b] for a in A for b in B}
r=len(cells[(A[0],B[0])]); a=len(A); b=len(B); n=a*b*r
y=[v for c in cells.values() for v in c]; g=sum(y)/n
cm={k:sum(v)/r for k,v in cells.items()}
ra={x:sum(cm[(x,z)] for z in B)/b for x in A}; cb={z:sum(cm[(x,z)] for x in A)/a for z in B}
ssa=b*r*sum((ra[x]-g)**2 for x in A); ssb=a*r*sum((cb[z]-g)**2 for z in B)
ssi=r*sum((cm[(x,z)]-ra[x]-cb[z]+g)**2 for x in A for z in B)
ssw=sum((v-cm[k])**2 for k,c in cells.items() for v in c); sst=sum((v-g)**2 for v in y)
f=lambda v: mp.mpf(v.numerator)/v.denominator
def pF(Fv,d1,d2): return mp.betainc(mp.mpf(d2)/2,mp.mpf(d1)/2,0,d2/(d2+d1*Fv),regularized=True)
if r>1: dfe=a*b*(r-1); sse=ssw; terms=[('A',a-1,ssa),('B',b-1,ssb),('AB',(a-1)*(b-1),ssi)]
else: dfe=(a-1)*(b-1); sse=ssi; terms=[('A',a-1,ssa),('B',b-1,ssb)]
mse=f(sse)/dfe
for name,df,ss in terms:
    Fv=f(ss)/df/mse; print(name,df,mp.nstr(f(ss),12),mp.nstr(f(ss)/df,12),mp.nstr(Fv,12),mp.nstr(pF(Fv,df,dfe),8))
print('Error',dfe,mp.nstr(f(sse),12),mp.nstr(mse,12),'Total',n-1,mp.nstr(f(sst),12))
model=sum(t[2] for t in terms); print('S',mp.nstr(mp.sqrt(mse),10),'R2',mp.nstr(f(model/(model+sse)),10),'adj',mp.nstr(1-mse/(f(sst)/(n-1)),10))
print('cells',{k:float(v) for k,v in cm.items()},'rows',{k:float(v) for k,v in ra.items()},'cols',{k:float(v) for k,v in cb.items()}, 'grand', float(g))
