insert into utilisateur (login, mot_pase, nom, prenom, role) values ('boss', '1', 'Amrani', 'Lila', 'Admin');
insert into type(code, Type_Produit) values (1, 'BOISSONS'), (2, 'PLATS');
insert into article(code_barre, designation_article, id_categorie, qte_min, qte_stock, desto) values
  ('1', 'EAU', 1, 5, 4, 'OUI'),
  ('2', 'THÉ', 1, 5, 4, 'NON'),
  ('3', 'TAJINE', 2, 0, 0, 'OUI'),
  ('4', 'COUSCOUS', 2, 1, 2, 'OUI'),
  ('5', 'EAU', 2, 0, 1, 'OUI');
